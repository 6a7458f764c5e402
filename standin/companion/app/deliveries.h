// Brings requests to hosts on a thread of its own, so that the window never waits for a host.
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

// One request and what has to lie ready when the host reads it. An empty path: nothing to do.
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
    std::wstring settingsFile{}; // written next, with `settings`; without any, removed
    std::string settings{};
};

struct DeliveryDesk {
    EventLog* log = nullptr; // outlives the desk
    peer::DeliveryBounds bounds;
    std::mutex mutex;
    std::vector<Delivery> arrived; // guarded by `mutex`
    // Set when there are arrivals or the end is asked for; reset by the thread's wait for it.
    peer::OwnHandle wake{CreateEventW(nullptr, FALSE, FALSE, nullptr)};
    std::jthread worker;
};

// Starts the desk's thread.
void startDeliveries(DeliveryDesk& desk);

// Ends and joins the thread. What is still under way is given up and logged as such.
void stopDeliveries(DeliveryDesk& desk);

// Hands a delivery to the thread. Those to one host are carried out in the order they came, each
// when the one before has ended; those to different hosts side by side. Each ends in exactly one
// of the events taken, not-taken, lost and not-sent.
void deliver(DeliveryDesk& desk, Delivery delivery);

} // namespace companion
