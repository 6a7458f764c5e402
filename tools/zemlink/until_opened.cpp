#include "tools/zemlink/until_opened.h"

#include "peer/exchange_paths.h"
#include "peer/files.h"
#include "peer/text.h"
#include "tools/zemlink/facts/system.h"
#include "tools/zemlink/session/file_look.h"

#include <chrono>

namespace zemlink {
namespace {

using Clock = std::chrono::steady_clock;

constexpr DWORD lookEveryMs = 50;
constexpr std::uint32_t mostBytesAtOnce = 1u << 24;

// The log from a place on, read as it grows. A log that has become shorter is a new file.
class GrowingLog {
public:
    GrowingLog(const std::wstring& folder, std::uint64_t start)
        : path_(peer::debugLogPath(folder)), start_(start)
    {
    }

    const std::string& read()
    {
        if (peer::fileSize(path_) < start_ + bytes_.size()) {
            start_ = 0;
            bytes_.clear();
        }
        bytes_ += readFrom(path_, start_ + bytes_.size(), mostBytesAtOnce).value_or("");
        return bytes_;
    }

private:
    std::wstring path_;
    std::uint64_t start_;
    std::string bytes_{};
};

peer::LoggedLoad findLastLoad(const std::string& log, const std::string& file)
{
    peer::LoggedLoad last;
    for (const peer::LoggedLoad& load : peer::parseDebugLog(log).loads)
        if (peer::ansiToUtf8(load.file) == file)
            last = load;
    return last;
}

} // namespace

std::uint64_t loadLogSize(const std::wstring& folder)
{
    return peer::fileSize(peer::debugLogPath(folder));
}

peer::LoggedLoad waitForLoad(const std::wstring& folder, const std::wstring& file,
                             std::uint64_t logStart, std::uint32_t host, std::int64_t boundMs)
{
    GrowingLog log(folder, logStart);
    const Clock::time_point end = Clock::now() + std::chrono::milliseconds(boundMs);
    for (;; Sleep(lookEveryMs)) {
        const bool isLastLook = Clock::now() >= end || !isRunning(host);
        peer::LoggedLoad load = findLastLoad(log.read(), peer::toUtf8(file));
        if (load.isFinished() || isLastLook)
            return load;
    }
}

} // namespace zemlink
