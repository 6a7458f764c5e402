// Watches an installation: what the Companion and the hosts do, as it happens.
//
// It changes nothing and holds nothing. Files are opened shared in every way and only for an
// instant, locks are neither set nor waited for.
#pragma once

#include "peer/handle.h"
#include "tools/zemlink/session/exchange_event.h"

#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace zemlink {

// The functions are for one thread.
class Observer {
public:
    // `folder`: the installation folder without a trailing backslash. Throws std::runtime_error,
    // with the cause, when there is no such folder.
    explicit Observer(const std::wstring& folder);
    ~Observer();
    Observer(const Observer&) = delete;
    Observer& operator=(const Observer&) = delete;

    // Milliseconds since 1970, UTC.
    std::int64_t startedAt() const { return startedAt_; }
    // What was there at that time, each as the event that would have brought it: running programs,
    // requests and machine settings that lie there, commits that wait, files.
    const std::vector<ExchangeEvent>& presentAtStart() const { return present_; }
    // What cannot be seen, a sentence each.
    const std::vector<std::string>& limits() const { return limits_; }

    // The events since the last call, in order. Waits for the first one up to `ms` milliseconds or
    // until `stop` is signalled; the result is then empty. Throws std::runtime_error when watching
    // has failed.
    std::vector<ExchangeEvent> wait(std::int64_t ms, HANDLE stop = nullptr);

private:
    void watch();
    void add(std::vector<ExchangeEvent>&& events, bool hasFailed);

    std::wstring folder_;
    std::int64_t startedAt_ = 0;
    std::vector<ExchangeEvent> present_{};
    std::vector<std::string> limits_{};
    peer::OwnHandle isReady_, hasEvents_, shallStop_;
    std::mutex mutex_; // guards the members below
    std::vector<ExchangeEvent> events_{};
    bool hasFailed_ = false;
    std::thread thread_; // last: it uses all others
};

} // namespace zemlink
