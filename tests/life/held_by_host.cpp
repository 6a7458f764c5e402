#include "life/held_by_host.h"

#include "support/waiting.h"

#include <filesystem>

namespace testing_support {

namespace {

// Whatever the calls are and however many: a leak of a kilobyte a step is well above it.
constexpr size_t mostGrowth = 2 << 20;
// The host keeps each line in characters of two bytes, in blocks with some room.
constexpr size_t memoryPerTraceByte = 4;

std::string change(const char* what, size_t before, size_t now)
{
    return std::string(what) + ' ' + std::to_string(before) + " to " + std::to_string(now);
}

} // namespace

HeldByHost::HeldByHost(unsigned long processId, std::wstring trace)
    : processId_(processId), trace_(std::move(trace))
{
}

void HeldByHost::takeBearings()
{
    onPurpose_ = {};
    before_ = countsOf(processId_);
    traceBytesBefore_ = traceBytes();
}

void HeldByHost::add(const std::map<std::string, size_t>& calls)
{
    for (const auto& [call, times] : calls) {
        onPurpose_.handles += table_.at(call).handles * times;
        onPurpose_.bytes += table_.at(call).bytes * times;
    }
}

std::string HeldByHost::complaint() const
{
    const size_t mostBytes = before_.privateBytes + onPurpose_.bytes + mostGrowth +
                             memoryPerTraceByte * (traceBytes() - traceBytesBefore_);
    const auto isAsPlanned = [&] {
        const ProcessCounts now = countsOf(processId_);
        return now.handles == before_.handles + onPurpose_.handles &&
               now.threads == before_.threads && now.privateBytes <= mostBytes;
    };
    return waitUntil(isAsPlanned) ? "" : figures() + '\n';
}

std::string HeldByHost::figures() const
{
    const ProcessCounts now = countsOf(processId_);
    return change("handles", before_.handles, now.handles) + " (" +
           std::to_string(onPurpose_.handles) + " on purpose), " +
           change("threads", before_.threads, now.threads) + ", " +
           change("private bytes", before_.privateBytes, now.privateBytes) + " (" +
           std::to_string(onPurpose_.bytes) + " on purpose, and " +
           std::to_string(traceBytes() - traceBytesBefore_) + " of trace)";
}

size_t HeldByHost::traceBytes() const
{
    std::error_code ignored;
    return static_cast<size_t>(std::filesystem::file_size(trace_, ignored));
}

} // namespace testing_support
