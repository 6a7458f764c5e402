#include "tools/zemlink/session/command_files.h"

#include "peer/command_file.h"
#include "peer/delivery.h"
#include "peer/exchange_paths.h"
#include "peer/wire_constants.h"

#include <algorithm>
#include <cstdlib>

namespace zemlink {
namespace {

// One more than a host accepts, so that a longer request is seen to be too long.
constexpr std::uint32_t mostRequestBytes = peer::longestRequestBytes + 1;

// Null with `isRunning` true for a process that the user may not open.
peer::OwnHandle openProcess(std::uint32_t process, bool& isRunning)
{
    peer::OwnHandle handle(
        OpenProcess(SYNCHRONIZE | PROCESS_QUERY_LIMITED_INFORMATION, FALSE, process));
    if (!handle) {
        isRunning = GetLastError() == ERROR_ACCESS_DENIED;
        return handle;
    }
    // Windows rounds an id down to a multiple of four.
    isRunning = GetProcessId(handle.get()) == process &&
                WaitForSingleObject(handle.get(), 0) == WAIT_TIMEOUT;
    if (!isRunning)
        handle.reset();
    return handle;
}

} // namespace

std::vector<ExchangeEvent> CommandFiles::look(std::int64_t now, bool isFollowed)
{
    std::vector<ExchangeEvent> events;
    for (const std::wstring& name : listFiles(peer::commandFilePattern(folder_)))
        if (const auto process = peer::processOfCommandFile(name))
            hosts_[*process];
    for (auto& [process, host] : hosts_) {
        lookAtHost(process, host, now, isFollowed, events);
        lookAtEnd(process, host, now, events);
    }
    // A request that went with its file is kept for a while: what follows shows whether it was
    // taken.
    std::erase_if(hosts_, [&](const auto& entry) {
        const Host& host = entry.second;
        return host.hasEnded && host.missingSince != 0 &&
               (!host.waiting || now - host.missingSince >= peer::DeliveryBounds().missingMs);
    });
    return events;
}

void CommandFiles::lookAtHost(std::uint32_t process, Host& host, std::int64_t now, bool isFollowed,
                              std::vector<ExchangeEvent>& events)
{
    const FileLook look = lookAt(peer::commandFilePath(folder_, process));
    if (!look.exists) {
        host.missingSince = host.missingSince == 0 ? now : host.missingSince;
        if (host.waiting && isFollowed && onlyHost() == process) { // taken before the file went
            events.push_back({host.missingSince, EventKind::requestTaken, process,
                              peer::commandFilePath(folder_, process), *host.waiting});
            host.waiting.reset();
            host.look = {}; // the next file is not a sign of another request
        }
        return;
    }
    host.missingSince = 0;
    if (!host.isRunning && !host.look.exists) {
        host.process = openProcess(process, host.isRunning);
        if (host.isRunning)
            events.push_back({look.writtenAt, EventKind::hostStarted, process});
    }
    if (look != host.look)
        lookAtRequest(process, host, look, now, isFollowed, events);
}

void CommandFiles::lookAtRequest(std::uint32_t process, Host& host, const FileLook& look,
                                 std::int64_t now, bool isFollowed,
                                 std::vector<ExchangeEvent>& events)
{
    const std::wstring path = peer::commandFilePath(folder_, process);
    const auto add = [&](EventKind kind, const std::string& bytes) {
        events.push_back({look.writtenAt, kind, process, path, bytes});
    };
    std::string bytes;
    if (look.size != 0) {
        bytes = readFrom(path, 0, mostRequestBytes).value_or("");
        if (bytes.empty())
            return; // just taken: the next look finds another file
    }
    if (host.waiting) {
        const bool isTimeOld = bytes.empty() && look.stamp == host.look.stamp;
        if (isTimeOld && !hasLasted(path, host, look, now, isFollowed))
            return;
        add(EventKind::requestTaken, *host.waiting);
        host.waiting.reset();
    } else if (bytes.empty() && host.look.exists && !isSameEmptying(host, look)) {
        if (!hasLasted(path, host, look, now, isFollowed))
            return;
        // A new file: a request has come and gone.
        add(EventKind::requestWritten, "");
        add(EventKind::requestTaken, "");
    }
    if (bytes.empty() && !isSameEmptying(host, look))
        host.emptiedAt = look.writtenAt;
    host.look = look;
    host.undecided = {};
    if (bytes.empty())
        return;
    add(EventKind::requestWritten, bytes);
    const peer::HostCommand request = peer::parseHostCommand(bytes);
    host.waiting = bytes;
    host.lastId = request.id;
    host.lastPart = request.path;
}

// Emptying a file can set its time twice: when it is made and when it is truncated. A host makes
// its next file a tenth of a second later at the earliest.
bool CommandFiles::isSameEmptying(const Host& host, const FileLook& look)
{
    constexpr std::int64_t leastCycleMs = 90;
    return std::abs(look.writtenAt - host.emptiedAt) < leastCycleMs;
}

// Size and time do not change in the same instant. On Linux a request that is just being written
// has its new time while it still looks empty, and a file that is just being emptied its old one.
bool CommandFiles::hasLasted(const std::wstring& path, Host& host, const FileLook& look,
                             std::int64_t now, bool isFollowed)
{
    constexpr std::int64_t instantMs = 30;
    constexpr DWORD shortInstantMs = 5;
    if (look != host.undecided) {
        host.undecided = look;
        host.undecidedSince = now;
    }
    if (isFollowed) {
        Sleep(shortInstantMs);
        return lookAt(path) == look;
    }
    return now - host.undecidedSince >= instantMs;
}

// The file of a host that has ended may still exist: another program has it open, or it was left
// from an earlier process with the same id. The handle stays signalled, so it is closed.
void CommandFiles::lookAtEnd(std::uint32_t process, Host& host, std::int64_t now,
                             std::vector<ExchangeEvent>& events)
{
    const bool isMissing = host.missingSince != 0;
    if (isMissing && now - host.missingSince >= peer::DeliveryBounds().missingMs)
        host.hasEnded = true;
    if (host.process && WaitForSingleObject(host.process.get(), 0) == WAIT_OBJECT_0) {
        host.hasEnded = true;
        host.process.reset();
    }
    if (host.hasEnded && host.isRunning)
        events.push_back({now, EventKind::hostEnded, process});
    host.isRunning = host.isRunning && !host.hasEnded;
}

std::vector<HANDLE> CommandFiles::processes() const
{
    std::vector<HANDLE> handles;
    for (const auto& [process, host] : hosts_)
        if (host.process)
            handles.push_back(host.process.get());
    return handles;
}

std::vector<std::uint32_t> CommandFiles::undecidedHosts() const
{
    std::vector<std::uint32_t> hosts;
    for (const auto& [process, host] : hosts_)
        if (host.missingSince != 0 || (host.undecided.exists && host.undecided != host.look))
            hosts.push_back(process);
    return hosts;
}

template <class Matches>
std::uint32_t CommandFiles::hostWhere(const Matches& matches) const
{
    const auto found =
        std::ranges::find_if(hosts_, [&](const auto& entry) { return matches(entry.second); });
    return found != hosts_.end() ? found->first : onlyHost();
}

std::uint32_t CommandFiles::onlyHost() const
{
    return hosts_.size() == 1 ? hosts_.begin()->first : 0;
}

std::uint32_t CommandFiles::hostOfRequest(std::int64_t id) const
{
    return hostWhere([&](const Host& host) { return host.lastId == id; });
}

std::uint32_t CommandFiles::hostOfPart(std::string_view path) const
{
    return hostWhere([&](const Host& host) { return host.lastPart == path; });
}

} // namespace zemlink
