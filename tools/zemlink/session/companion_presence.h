// Whether the Companion runs.
#pragma once

#include "peer/handle.h"
#include "tools/zemlink/session/exchange_event.h"

#include <vector>

namespace zemlink {

class CompanionPresence {
public:
    // Its start or its end since the last look. Nothing announces that its window has opened, so
    // look every second.
    std::vector<ExchangeEvent> look(std::int64_t now);
    // Signalled when its process ends; null while it is not running or may not be opened.
    HANDLE process() const { return handle_.get(); }

private:
    bool hasEnded() const;

    bool isRunning_ = false;
    std::int64_t claimedSince_ = 0; // its semaphore exists, but no window; 0: not so
    std::uint32_t process_ = 0;
    peer::OwnHandle handle_{};
};

} // namespace zemlink
