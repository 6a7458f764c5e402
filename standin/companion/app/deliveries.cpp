#include "standin/companion/app/deliveries.h"

#include "peer/delivery.h"
#include "peer/files.h"
#include "standin/companion/log/event_text.h"

#include <algorithm>
#include <chrono>
#include <windows.h>

namespace companion {
namespace {

using Clock = std::chrono::steady_clock;

// The polling interval, which is the error limit of `after`.
constexpr DWORD lookEveryMs = 5;
// Without deliveries; also limits how long the thread takes to end.
constexpr DWORD idleMs = 100;

struct Ongoing {
    Delivery delivery{};
    Clock::time_point since{};    // when it was begun or, once written, when its file was closed
    Clock::time_point lastSeen{}; // when the command file last existed
    bool isBegun = false;
    bool isPrepared = false;
    bool isWritten = false;
    bool isDone = false;
};

std::int64_t elapsedMs(Clock::time_point from)
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - from).count();
}

std::wstring addressFields(const Delivery& delivery)
{
    return numberField(L"id", delivery.id) + numberField(L"host", delivery.host);
}

void endWritten(EventLog& log, Ongoing& ongoing, std::wstring_view event)
{
    const std::chrono::duration<double, std::milli> after = Clock::now() - ongoing.since;
    logEvent(log, event,
             addressFields(ongoing.delivery) + millisecondsField(L"after", after.count()) +
                 wordField(L"request", ongoing.delivery.kind));
    ongoing.isDone = true;
}

void endUnwritten(EventLog& log, Ongoing& ongoing, std::wstring_view reason)
{
    logEvent(log, L"not-sent",
             addressFields(ongoing.delivery) + textField(L"reason", reason) +
                 wordField(L"request", ongoing.delivery.kind));
    ongoing.isDone = true;
}

// A work file that was saved but never committed is moved aside. False when that fails.
bool keepChangedWork(EventLog& log, const Delivery& delivery)
{
    const std::optional<std::string> work = peer::readFile(delivery.workFile);
    if (!work || work == peer::readFile(delivery.versionFile))
        return true;
    const std::wstring kept = peer::freeName(delivery.workFile + L".kept-", L"");
    if (!MoveFileW(delivery.workFile.c_str(), kept.c_str()))
        return false;
    logEvent(log, L"kept", numberField(L"id", delivery.id) + textField(L"file", kept));
    return true;
}

// The library may be write-protected, but the host must be able to save the copy.
bool copyWorkFile(EventLog& log, const Delivery& delivery)
{
    if (delivery.workFile.empty())
        return true;
    if (!keepChangedWork(log, delivery))
        return false;
    SetFileAttributesW(delivery.workFile.c_str(), FILE_ATTRIBUTE_NORMAL);
    return CopyFileW(delivery.versionFile.c_str(), delivery.workFile.c_str(), FALSE) &&
           SetFileAttributesW(delivery.workFile.c_str(), FILE_ATTRIBUTE_NORMAL);
}

// Settings left over from an earlier request with the same id would apply to this one.
bool writeSettings(const Delivery& delivery)
{
    if (delivery.settings.empty()) {
        DeleteFileW(delivery.settingsFile.c_str());
        return true;
    }
    return peer::writeFile(delivery.settingsFile, delivery.settings);
}

// False when the delivery has ended because a file cannot be prepared.
bool prepare(EventLog& log, Ongoing& ongoing)
{
    if (!copyWorkFile(log, ongoing.delivery))
        endUnwritten(log, ongoing, L"the work file cannot be written");
    else if (!writeSettings(ongoing.delivery))
        endUnwritten(log, ongoing, L"the machine settings cannot be written");
    ongoing.isPrepared = !ongoing.isDone;
    return ongoing.isPrepared;
}

void logWritten(EventLog& log, const Delivery& delivery)
{
    if (!delivery.settings.empty()) {
        logEvent(log, L"settings",
                 addressFields(delivery) + textField(L"file", delivery.settingsFile));
    }
    logEvent(log, delivery.writtenEvent, addressFields(delivery) + delivery.writtenFields);
}

// The files are written before the request, because the host may act on it immediately. The events
// are logged after it, because `after` must not include the time to write the log.
void tryToWrite(EventLog& log, Ongoing& ongoing)
{
    if (!ongoing.isPrepared && !prepare(log, ongoing))
        return;
    if (!peer::writeRequest(ongoing.delivery.commandFile, ongoing.delivery.request))
        return;
    ongoing.since = Clock::now();
    ongoing.lastSeen = ongoing.since;
    ongoing.isWritten = true;
    logWritten(log, ongoing.delivery);
}

void act(EventLog& log, Ongoing& ongoing, peer::Verdict verdict)
{
    switch (verdict) {
    case peer::Verdict::wait:
        break;
    case peer::Verdict::write:
        tryToWrite(log, ongoing);
        break;
    case peer::Verdict::full:
        endUnwritten(log, ongoing, L"the host has not taken an earlier request");
        break;
    case peer::Verdict::missing:
        endUnwritten(log, ongoing, L"the host has no command file");
        break;
    case peer::Verdict::taken:
        endWritten(log, ongoing, L"taken");
        break;
    case peer::Verdict::notTaken:
        endWritten(log, ongoing, L"not-taken");
        break;
    case peer::Verdict::lost:
        endWritten(log, ongoing, L"lost");
        break;
    }
}

void step(DeliveryQueue& queue, Ongoing& ongoing)
{
    if (!ongoing.isBegun) {
        ongoing.isBegun = true;
        ongoing.since = Clock::now();
        ongoing.lastSeen = ongoing.since;
    }
    const peer::CommandFileState state = peer::readCommandFileState(ongoing.delivery.commandFile);
    if (state.exists)
        ongoing.lastSeen = Clock::now();
    const auto judge = ongoing.isWritten ? peer::judgeAfterWriting : peer::judgeBeforeWriting;
    act(*queue.log, ongoing,
        judge(state, elapsedMs(ongoing.since), elapsedMs(ongoing.lastSeen), queue.bounds));
}

bool isFirstOfItsHost(const std::vector<Ongoing>& all, const Ongoing& one)
{
    const auto first = std::find_if(all.begin(), all.end(), [&](const Ongoing& other) {
        return other.delivery.host == one.delivery.host;
    });
    return &*first == &one;
}

void stepAll(DeliveryQueue& queue, std::vector<Ongoing>& all)
{
    for (Ongoing& one : all)
        if (isFirstOfItsHost(all, one))
            step(queue, one);
    std::erase_if(all, [](const Ongoing& one) { return one.isDone; });
}

// Waits for new deliveries or the end. The event stays set until a wait has returned for it.
void collect(DeliveryQueue& queue, std::vector<Ongoing>& all)
{
    WaitForSingleObject(queue.wake.get(), all.empty() ? idleMs : lookEveryMs);
    const std::lock_guard lock(queue.mutex);
    for (Delivery& delivery : queue.arrived)
        all.push_back({.delivery = std::move(delivery)});
    queue.arrived.clear();
}

void work(DeliveryQueue& queue, const std::stop_token& stop)
{
    std::vector<Ongoing> all;
    while (!stop.stop_requested()) {
        collect(queue, all);
        stepAll(queue, all);
    }
    for (Ongoing& one : all)
        if (one.isWritten)
            endWritten(*queue.log, one, L"not-taken");
        else
            endUnwritten(*queue.log, one, L"the program ends");
}

} // namespace

void startDeliveries(DeliveryQueue& queue)
{
    queue.worker = std::jthread([&queue](const std::stop_token& stop) {
        try {
            work(queue, stop);
        } catch (...) {
            // Out of memory: nothing more is delivered, the window continues.
        }
    });
}

void stopDeliveries(DeliveryQueue& queue)
{
    queue.worker.request_stop();
    SetEvent(queue.wake.get());
    if (queue.worker.joinable())
        queue.worker.join();
}

void deliver(DeliveryQueue& queue, Delivery delivery)
{
    {
        const std::lock_guard lock(queue.mutex);
        queue.arrived.push_back(std::move(delivery));
    }
    SetEvent(queue.wake.get());
}

} // namespace companion
