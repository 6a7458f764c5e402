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
#include <utility>
#include <vector>

namespace zemlink {

// Events that wait for their reader, up to a number of bytes or one larger event. Not synchronised.
class EventQueue {
public:
    explicit EventQueue(size_t mostBytes) : mostBytes_(mostBytes) {}

    // Events for which there is no room are lost.
    void add(std::vector<ExchangeEvent>&& events);
    std::vector<ExchangeEvent> take();
    // The number of events lost since the last call.
    size_t takeLost() { return std::exchange(lost_, 0); }
    bool isEmpty() const { return events_.empty(); }

private:
    size_t mostBytes_, bytes_ = 0, lost_ = 0;
    std::vector<ExchangeEvent> events_{};
};

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
    // What existed at that time, each as the event that led to it: running programs, requests and
    // machine settings that have not been taken, commits that have not been taken, files.
    const std::vector<ExchangeEvent>& presentAtStart() const { return present_; }
    // What cannot be seen, a sentence each.
    const std::vector<std::string>& limits() const { return limits_; }

    // The events since the last call, in order. Waits for the first one up to `ms` milliseconds or
    // until `stop` is signalled; the result is then empty. Throws std::runtime_error when watching
    // has failed.
    std::vector<ExchangeEvent> wait(std::int64_t ms, HANDLE stop = nullptr);
    // The number of events since the last call that were lost because `wait` was not called in time
    // and more than 64 MB were waiting.
    size_t takeLost();

private:
    void watch();
    void add(std::vector<ExchangeEvent>&& events, bool hasFailed);

    std::wstring folder_;
    std::int64_t startedAt_ = 0;
    std::vector<ExchangeEvent> present_{};
    std::vector<std::string> limits_{};
    peer::OwnHandle isReady_, hasEvents_, shallStop_;
    std::mutex mutex_; // guards the members below
    EventQueue events_;
    bool hasFailed_ = false;
    std::thread thread_; // last: it uses all others
};

} // namespace zemlink
