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

// The time between two looks at a command file, which bounds the error of `after`.
constexpr DWORD lookEveryMs = 5;
// With nothing to do; bounds how long the program's end can wait for the thread, whatever happens.
constexpr DWORD idleMs = 100;

struct Ongoing {
    Delivery delivery{};
    Clock::time_point since{};    // it was begun or, once written, its file was closed
    Clock::time_point lastSeen{}; // the command file existed
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

// Work that was saved and never came back as a version is moved aside. False when that fails.
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

// The copy may come from a write-protected library; the host saves into it.
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

// Settings that an earlier request of the same id left behind would count for this one.
bool writeSettings(const Delivery& delivery)
{
    if (delivery.settings.empty()) {
        DeleteFileW(delivery.settingsFile.c_str());
        return true;
    }
    return peer::writeFile(delivery.settingsFile, delivery.settings);
}

// False when the delivery has ended because something cannot be laid ready.
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

// The files lie ready before the request is written, because the host may act on it at once; the
// events are logged after it, because writing the log takes time that `after` would not count.
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

void step(DeliveryDesk& desk, Ongoing& ongoing)
{
    if (!ongoing.isBegun) {
        ongoing.isBegun = true;
        ongoing.since = Clock::now();
        ongoing.lastSeen = ongoing.since;
    }
    const peer::Sight sight = peer::lookAtCommandFile(ongoing.delivery.commandFile);
    if (sight.exists)
        ongoing.lastSeen = Clock::now();
    const auto judge = ongoing.isWritten ? peer::judgeAfterWriting : peer::judgeBeforeWriting;
    act(*desk.log, ongoing,
        judge(sight, elapsedMs(ongoing.since), elapsedMs(ongoing.lastSeen), desk.bounds));
}

bool isFirstOfItsHost(const std::vector<Ongoing>& all, const Ongoing& one)
{
    const auto first = std::find_if(all.begin(), all.end(), [&](const Ongoing& other) {
        return other.delivery.host == one.delivery.host;
    });
    return &*first == &one;
}

void stepAll(DeliveryDesk& desk, std::vector<Ongoing>& all)
{
    for (Ongoing& one : all)
        if (isFirstOfItsHost(all, one))
            step(desk, one);
    std::erase_if(all, [](const Ongoing& one) { return one.isDone; });
}

// Waits for arrivals or the end. The event stays set until a wait has seen it.
void collect(DeliveryDesk& desk, std::vector<Ongoing>& all)
{
    WaitForSingleObject(desk.wake.get(), all.empty() ? idleMs : lookEveryMs);
    const std::lock_guard lock(desk.mutex);
    for (Delivery& delivery : desk.arrived)
        all.push_back({.delivery = std::move(delivery)});
    desk.arrived.clear();
}

void work(DeliveryDesk& desk, const std::stop_token& stop)
{
    std::vector<Ongoing> all;
    while (!stop.stop_requested()) {
        collect(desk, all);
        stepAll(desk, all);
    }
    for (Ongoing& one : all)
        if (one.isWritten)
            endWritten(*desk.log, one, L"not-taken");
        else
            endUnwritten(*desk.log, one, L"the program ends");
}

} // namespace

void startDeliveries(DeliveryDesk& desk)
{
    desk.worker = std::jthread([&desk](const std::stop_token& stop) {
        try {
            work(desk, stop);
        } catch (...) {
            // Out of memory: nothing more is delivered, the window goes on.
        }
    });
}

void stopDeliveries(DeliveryDesk& desk)
{
    desk.worker.request_stop();
    SetEvent(desk.wake.get());
    if (desk.worker.joinable())
        desk.worker.join();
}

void deliver(DeliveryDesk& desk, Delivery delivery)
{
    {
        const std::lock_guard lock(desk.mutex);
        desk.arrived.push_back(std::move(delivery));
    }
    SetEvent(desk.wake.get());
}

} // namespace companion
