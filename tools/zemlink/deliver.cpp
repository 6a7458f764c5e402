#include "tools/zemlink/deliver.h"

#include "peer/command_file_io.h"
#include "tools/zemlink/system_error.h"

#include <algorithm>
#include <chrono>
#include <windows.h>

namespace zemlink {
namespace {

using Clock = std::chrono::steady_clock;
using companion::Sight;
using companion::Verdict;

constexpr DWORD lookEveryMs = 5;

std::int64_t elapsedMs(Clock::time_point from)
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - from).count();
}

// Looks at the file again and again until the judgement is another than to wait.
template <class Judge>
Verdict waitFor(const std::wstring& path, Clock::time_point since, Judge judge)
{
    Clock::time_point lastSeen = since;
    for (;; Sleep(lookEveryMs)) {
        const Sight sight = companion::lookAtCommandFile(path);
        lastSeen = sight.exists ? Clock::now() : lastSeen;
        const Verdict verdict = judge(sight, elapsedMs(since), elapsedMs(lastSeen));
        if (verdict != Verdict::wait)
            return verdict;
    }
}

} // namespace

Delivered deliver(const std::wstring& commandFile, const std::string& request, std::int64_t boundMs)
{
    companion::DeliveryBounds bounds{boundMs, boundMs};
    bounds.missingMs = std::min(bounds.missingMs, boundMs);
    const Clock::time_point start = Clock::now();
    std::string cause;
    for (bool isWritten = false; !isWritten; Sleep(isWritten ? 0 : lookEveryMs)) {
        const Verdict verdict =
            waitFor(commandFile, start, [&](const Sight& sight, auto waitedMs, auto missingMs) {
                return judgeBeforeWriting(sight, waitedMs, missingMs, bounds);
            });
        if (verdict != Verdict::write) {
            const bool isEmpty = companion::lookAtCommandFile(commandFile).size == 0;
            return {verdict, isEmpty ? cause : ""};
        }
        SetLastError(ERROR_SUCCESS);
        isWritten = companion::writeRequest(commandFile, request);
        const DWORD error = GetLastError();
        cause = error == ERROR_SUCCESS ? "" : systemErrorText(error);
    }
    const Verdict verdict =
        waitFor(commandFile, Clock::now(), [&](const Sight& sight, auto waitedMs, auto missingMs) {
            return judgeAfterWriting(sight, waitedMs, missingMs, bounds);
        });
    return {verdict};
}

} // namespace zemlink
