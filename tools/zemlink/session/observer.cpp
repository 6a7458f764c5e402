#include "tools/zemlink/session/observer.h"

#include "peer/exchange_paths.h"
#include "peer/files.h"
#include "peer/text.h"
#include "peer/wire_constants.h"
#include "tools/zemlink/session/exchange_look.h"
#include "tools/zemlink/session/local_time.h"

#include <algorithm>
#include <stdexcept>

namespace zemlink {
namespace {

peer::OwnHandle makeEvent(bool isManual)
{
    return peer::OwnHandle(CreateEventW(nullptr, isManual, FALSE, nullptr));
}

bool isExistingFolder(const std::wstring& path)
{
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

std::vector<std::string> findLimits(const std::wstring& folder)
{
    std::vector<std::string> limits;
    for (const wchar_t* below : {peer::tempFolder, peer::commitFolder, L"\\sys"})
        if (!isExistingFolder(folder + below))
            limits.push_back(peer::toUtf8(folder + below) +
                             " does not exist; it is watched once it does.");
    if (!peer::isFile(peer::logPath(folder))) {
        limits.push_back(peer::toUtf8(peer::logPath(folder)) +
                         " does not exist; notices cannot be seen without the Companion's log.");
    }
    return limits;
}

} // namespace

Observer::Observer(const std::wstring& folder)
    : folder_(folder),
      limits_(findLimits(folder)),
      isReady_(makeEvent(true)),
      hasEvents_(makeEvent(false)),
      shallStop_(makeEvent(true))
{
    if (!isExistingFolder(folder))
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
    }
}

void Observer::add(std::vector<ExchangeEvent>&& events, bool hasFailed)
{
    const std::lock_guard lock(mutex_);
    std::ranges::move(events, std::back_inserter(events_));
    hasFailed_ = hasFailed_ || hasFailed;
    if (hasFailed)
        SetEvent(isReady_.get());
    if (!events_.empty() || hasFailed)
        SetEvent(hasEvents_.get());
}

std::vector<ExchangeEvent> Observer::wait(std::int64_t ms, HANDLE stop)
{
    const HANDLE handles[] = {hasEvents_.get(), stop};
    const auto limit = static_cast<DWORD>(std::clamp<std::int64_t>(ms, 0, INFINITE - 1));
    WaitForMultipleObjects(stop ? 2 : 1, handles, FALSE, limit);
    const std::lock_guard lock(mutex_);
    if (hasFailed_ && events_.empty())
        throw std::runtime_error("the installation cannot be watched any more");
    return std::exchange(events_, {});
}

} // namespace zemlink
