#include "tools/zemlink/session/companion_presence.h"

#include "peer/running_programs.h"

namespace zemlink {
namespace {

constexpr std::int64_t windowBoundMs = 5000;

} // namespace

std::vector<ExchangeEvent> CompanionPresence::look(std::int64_t now)
{
    std::vector<ExchangeEvent> events;
    if (isRunning_ && hasEnded()) {
        events.push_back({now, EventKind::companionEnded, process_});
        isRunning_ = false;
        handle_.reset();
    }
    if (isRunning_)
        return events;
    const HWND window = peer::findInstanceWindow();
    const bool isClaimed = !window && peer::isInstanceRunning();
    claimedSince_ = !isClaimed ? 0 : claimedSince_ == 0 ? now : claimedSince_;
    // It claims the semaphore before it opens its window.
    if (window || (isClaimed && now - claimedSince_ >= windowBoundMs)) {
        isRunning_ = true;
        process_ = window ? peer::processOf(window) : 0;
        handle_.reset(window ? OpenProcess(SYNCHRONIZE, FALSE, process_) : nullptr);
        events.push_back({now, EventKind::companionStarted, process_});
    }
    return events;
}

bool CompanionPresence::hasEnded() const
{
    if (handle_)
        return WaitForSingleObject(handle_.get(), 0) == WAIT_OBJECT_0;
    return !peer::isInstanceRunning() && !peer::findInstanceWindow();
}

} // namespace zemlink
