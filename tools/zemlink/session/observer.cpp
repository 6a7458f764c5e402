#include "tools/zemlink/session/observer.h"

#include "peer/exchange_paths.h"
#include "peer/files.h"
#include "peer/running_programs.h"
#include "peer/text.h"
#include "peer/wire_constants.h"
#include "tools/zemlink/reports/companion_history.h"
#include "tools/zemlink/session/exchange_look.h"
#include "tools/zemlink/session/file_look.h"
#include "tools/zemlink/session/local_time.h"

#include <algorithm>
#include <stdexcept>

namespace zemlink {
namespace {

constexpr size_t mostWaitingBytes = size_t{64} << 20;
constexpr std::uint32_t mostLogBytes = 64 << 20; // the latest, of a longer log
constexpr DWORD betweenLooksMs = 5;              // other programs may change files all the time

peer::OwnHandle makeEvent(bool isManual)
{
    return peer::OwnHandle(CreateEventW(nullptr, isManual, FALSE, nullptr));
}

// Why notices cannot be seen; empty when they can, as far as is known.
std::string findLimitOfNotices(const std::wstring& folder)
{
    const std::string path = peer::toUtf8(peer::logPath(folder));
    const auto log = peer::readEnd(peer::logPath(folder), mostLogBytes);
    if (!log)
        return path + " does not exist; notices cannot be seen without the Companion's log.";
    // A longer log may have the start before the part that is read.
    const HWND companion = peer::findInstanceWindow();
    const bool isItsLog = !companion || log->size() == mostLogBytes ||
                          hasPort(eventsIn(*log), peer::processOf(companion));
    return isItsLog ? ""
                    : path + " is not the running Companion's; notices cannot be seen without its "
                             "log.";
}

std::vector<std::string> findLimits(const std::wstring& folder)
{
    std::vector<std::string> limits;
    for (const wchar_t* below : {peer::tempFolder, peer::commitFolder, peer::logFolder})
        if (!isFolder(folder + below))
            limits.push_back(peer::toUtf8(folder + below) +
                             " does not exist; it is watched once it does.");
    if (std::string limit = findLimitOfNotices(folder); !limit.empty())
        limits.push_back(std::move(limit));
    return limits;
}

} // namespace

void EventQueue::add(std::vector<ExchangeEvent>&& events)
{
    for (ExchangeEvent& event : events) {
        const size_t size = sizeof event + event.bytes.size() + event.file.size() * sizeof(wchar_t);
        if (bytes_ != 0 && bytes_ + size > mostBytes_) {
            ++lost_;
            continue;
        }
        bytes_ += size;
        events_.push_back(std::move(event));
    }
}

std::vector<ExchangeEvent> EventQueue::take()
{
    bytes_ = 0;
    return std::exchange(events_, {});
}

Observer::Observer(const std::wstring& folder)
    : folder_(folder),
      limits_(findLimits(folder)),
      isReady_(makeEvent(true)),
      hasEvents_(makeEvent(false)),
      shallStop_(makeEvent(true)),
      events_(mostWaitingBytes)
{
    if (!isFolder(folder))
        throw std::runtime_error("there is no folder " + peer::toUtf8(folder));
    thread_ = std::thread([this] {
        try {
            watch();
        } catch (...) {
            add({}, true);
        }
    });
    WaitForSingleObject(isReady_.get(), INFINITE);
}

Observer::~Observer()
{
    SetEvent(shallStop_.get());
    thread_.join();
}

// In a thread of its own, because a request can be read only for a tenth of a second, whatever
// else the program is doing.
void Observer::watch()
{
    SetThreadPriority(GetCurrentThread(), THREAD_PRIORITY_HIGHEST);
    ExchangeLook look(folder_);
    present_ = look.look();
    startedAt_ = currentTime();
    for (ExchangeEvent& event : present_)
        event.at = startedAt_;
    SetEvent(isReady_.get());
    ULONGLONG lastSlowLook = GetTickCount64();
    for (;;) {
        std::vector<HANDLE> handles = look.handles();
        handles.insert(handles.begin(), shallStop_.get());
        // More than so many hosts are looked at when something else happens.
        const size_t count = std::min(handles.size(), size_t{MAXIMUM_WAIT_OBJECTS});
        const DWORD signal = WaitForMultipleObjects(static_cast<DWORD>(count), handles.data(),
                                                    FALSE, look.nextLookMs());
        if (signal == WAIT_OBJECT_0)
            return;
        const bool isSlow = GetTickCount64() - lastSlowLook >= 1000;
        lastSlowLook = isSlow ? GetTickCount64() : lastSlowLook;
        look.rearm(isSlow);
        add(look.look(), false);
        Sleep(betweenLooksMs);
    }
}

void Observer::add(std::vector<ExchangeEvent>&& events, bool hasFailed)
{
    const std::lock_guard lock(mutex_);
    events_.add(std::move(events));
    hasFailed_ = hasFailed_ || hasFailed;
    if (hasFailed)
        SetEvent(isReady_.get());
    if (!events_.isEmpty() || hasFailed)
        SetEvent(hasEvents_.get());
}

std::vector<ExchangeEvent> Observer::wait(std::int64_t ms, HANDLE stop)
{
    const HANDLE handles[] = {hasEvents_.get(), stop};
    const auto limit = static_cast<DWORD>(std::clamp<std::int64_t>(ms, 0, INFINITE - 1));
    WaitForMultipleObjects(stop ? 2 : 1, handles, FALSE, limit);
    const std::lock_guard lock(mutex_);
    if (hasFailed_ && events_.isEmpty())
        throw std::runtime_error("the installation cannot be watched any more");
    return events_.take();
}

size_t Observer::takeLost()
{
    const std::lock_guard lock(mutex_);
    return events_.takeLost();
}

} // namespace zemlink
