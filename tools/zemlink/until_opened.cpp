#include "tools/zemlink/until_opened.h"

#include "peer/exchange_paths.h"
#include "peer/files.h"
#include "peer/text.h"
#include "tools/zemlink/facts/system.h"

#include <chrono>

namespace zemlink {
namespace {

using Clock = std::chrono::steady_clock;

constexpr DWORD lookEveryMs = 50;

peer::LoggedLoad findLastLoad(const std::wstring& folder, const std::string& file,
                              std::uint64_t logStart)
{
    std::string log = peer::readFile(peer::debugLogPath(folder)).value_or("");
    if (log.size() >= logStart) // else it is a new file
        log.erase(0, static_cast<size_t>(logStart));
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
    const Clock::time_point end = Clock::now() + std::chrono::milliseconds(boundMs);
    for (;; Sleep(lookEveryMs)) {
        const bool isLastLook = Clock::now() >= end || !isRunning(host);
        const peer::LoggedLoad load = findLastLoad(folder, peer::toUtf8(file), logStart);
        if (load.isFinished() || isLastLook)
            return load;
    }
}

} // namespace zemlink
