#include "tools/zemlink/verify/waiting.h"

#include <algorithm>
#include <chrono>

namespace zemlink {

std::int64_t monotonicMs()
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
}

bool Waiting::until(const std::function<bool()>& condition, std::int64_t boundMs,
                    DWORD lookEveryMs) const
{
    const std::int64_t end = monotonicMs() + boundMs;
    for (;;) {
        for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);)
            DispatchMessageW(&message);
        if (condition())
            return true;
        const std::int64_t left = end - monotonicMs();
        if (left <= 0)
            return false;
        const DWORD lookInMs = static_cast<DWORD>(std::min<std::int64_t>(left, lookEveryMs));
        if (MsgWaitForMultipleObjects(1, &stop_, FALSE, lookInMs, QS_ALLINPUT) == WAIT_OBJECT_0)
            throw Interrupted();
    }
}

} // namespace zemlink
