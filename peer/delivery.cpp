#include "peer/delivery.h"

namespace companion {

Verdict judgeBeforeWriting(const Sight& sight, std::int64_t waitedMs, std::int64_t missingMs,
                           const DeliveryBounds& bounds)
{
    if (!sight.exists)
        return missingMs < bounds.missingMs ? Verdict::wait : Verdict::missing;
    // The bound comes first, so that a file which looks empty but can never be written ends too.
    if (waitedMs >= bounds.beforeWritingMs)
        return Verdict::full;
    return sight.size == 0 ? Verdict::write : Verdict::wait;
}

Verdict judgeAfterWriting(const Sight& sight, std::int64_t waitedMs, std::int64_t missingMs,
                          const DeliveryBounds& bounds)
{
    if (!sight.exists)
        return missingMs < bounds.missingMs ? Verdict::wait : Verdict::lost;
    if (sight.size == 0)
        return Verdict::taken;
    return waitedMs < bounds.untilTakenMs ? Verdict::wait : Verdict::notTaken;
}

} // namespace companion
