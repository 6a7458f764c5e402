// Delivers requests to hosts on its own thread, so that the window never waits for a host.
#pragma once

#include "peer/delivery.h"
#include "peer/handle.h"
#include "standin/companion/log/event_log.h"

#include <cstdint>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace companion {

// One request and the files that the host needs for it. An empty path means nothing to do.
struct Delivery {
    std::uint32_t host = 0; // process id
    std::int32_t id = 0;
    std::wstring commandFile{};
    std::string request{};       // the bytes
    std::wstring kind{};         // `open`, `new-file`, `check-in`: for the event log
    std::wstring writtenEvent{}; // logged when the request is written, with `writtenFields`
    std::wstring writtenFields{};
    std::wstring versionFile{}; // copied to `workFile` first
    std::wstring workFile{};
    std::wstring settingsFile{}; // written next, with `settings`; deleted if those are empty
    std::string settings{};
};

struct DeliveryQueue {
    EventLog* log = nullptr; // must outlive this object
    peer::DeliveryBounds bounds;
    std::mutex mutex;
    std::vector<Delivery> arrived; // guarded by `mutex`
    // Set on new deliveries and to end the thread; reset by the thread's wait.
    peer::OwnHandle wake{CreateEventW(nullptr, FALSE, FALSE, nullptr)};
    std::jthread worker;
};

// Starts the thread.
void startDeliveries(DeliveryQueue& queue);

// Ends and joins the thread. Unfinished deliveries are given up and logged.
void stopDeliveries(DeliveryQueue& queue);

// Passes a delivery to the thread. Deliveries to one host are carried out one after the other,
// those to different hosts in parallel. Each ends with exactly one of the events taken, not-taken,
// lost and not-sent.
void deliver(DeliveryQueue& queue, Delivery delivery);

} // namespace companion
