#include "standin/companion/app/commands.h"

#include "peer/command_file.h"
#include "peer/exchange_paths.h"
#include "peer/files.h"
#include "peer/machine_settings.h"
#include "peer/text.h"
#include "standin/companion/app/installation.h"
#include "standin/companion/log/event_text.h"

#include <algorithm>
#include <optional>

namespace companion {
namespace {

constexpr std::int32_t secondNumber = 0; // hosts ignore it

bool refuse(State& state, const std::wstring& reason)
{
    logEvent(state.log, L"refused", textField(L"reason", reason));
    return false;
}

bool isListed(const std::vector<peer::Host>& hosts, std::uint32_t process)
{
    return std::any_of(
        hosts.begin(), hosts.end(),
        [&](const peer::Host& host) { return host.process == process; });
}

// A host without a main window has no property to find it by, but it has a command file.
bool isRunning(const State& state, std::uint32_t process)
{
    return isListed(state.hosts, process) ||
           peer::isFile(peer::commandFilePath(state.folder, process));
}

// The host of the command, else the first running one. Empty, and logged, when there is none.
std::optional<std::uint32_t> chooseHost(State& state, const peer::Command& command)
{
    refreshHosts(state);
    if (!command.host && state.hosts.empty()) {
        refuse(state, L"no host is running");
        return std::nullopt;
    }
    const std::uint32_t process = command.host ? *command.host : state.hosts.front().process;
    if (!isRunning(state, process)) {
        refuse(state, L"host " + std::to_wstring(process) + L" is not running");
        return std::nullopt;
    }
    return process;
}

std::int32_t requestId(const peer::Command& command, std::int32_t otherwise)
{
    return static_cast<std::int32_t>(command.id.value_or(otherwise));
}

// A host applies machine settings only if a file exists for the request; an item without a machine
// definition gets none. False when the settings cannot be encoded.
bool addSettings(const State& state, const peer::Command& command, const LibraryItem& item,
                 Delivery& delivery)
{
    delivery.settingsFile = peer::machineSettingsPath(state.folder, delivery.id);
    const std::wstring machine = command.machine.value_or(item.machine);
    if (machine.empty())
        return true;
    const auto line = peer::formatMachineSettings(delivery.id, command.ncPath.value_or(item.ncPath),
                                                  secondNumber, machine);
    const auto bytes = line ? peer::toAnsi(*line) : std::nullopt;
    if (!bytes)
        return false;
    delivery.settings = *bytes;
    return true;
}

bool sendItem(State& state, const peer::Command& command, const LibraryItem& item,
              std::uint32_t host)
{
    Delivery delivery{.host = host,
                      .id = requestId(command, item.number),
                      .commandFile = peer::commandFilePath(state.folder, host),
                      .kind = L"open",
                      .writtenEvent = L"sent",
                      .versionFile = versionPath(state.folder, item),
                      .workFile = workFolder(state.folder) + L'\\' + item.name + L".mcam"};
    if (!peer::isFile(delivery.versionFile))
        return refuse(state, L"there is no file " + delivery.versionFile);
    const auto request = peer::formatOpenRequest(delivery.id, delivery.workFile);
    if (!request)
        return refuse(state, L"hosts do not accept the path " + delivery.workFile);
    if (!addSettings(state, command, item, delivery))
        return refuse(state, L"the path of the machine definition cannot be passed on");
    keepCopy(state.copies, {delivery.id, item.number, delivery.workFile});
    delivery.request = *request;
    delivery.writtenFields = textField(L"file", delivery.workFile);
    state.sentFile[host] = peer::fileNameOf(delivery.workFile);
    deliver(state.deliveries, std::move(delivery));
    return true;
}

// Commits first: the working copy of the part is about to be overwritten.
bool send(State& state, const peer::Command& command)
{
    if (!takeAllCommits(state))
        return refuse(state, L"a commit waits to be stored");
    refreshLibrary(state.library, state.folder, state.log);
    const LibraryItem* item = findItem(state.library.index, command.value);
    if (item == nullptr)
        return refuse(state, L"the library has no item " + command.value);
    const auto host = chooseHost(state, command);
    return host && sendItem(state, command, *item, *host);
}

bool sendNewFile(State& state, const peer::Command& command)
{
    const auto host = chooseHost(state, command);
    if (!host)
        return false;
    const std::int32_t id = requestId(command, 0);
    state.sentFile.erase(*host);
    if (id != 0)
        keepCopy(state.copies, {.id = id}); // what is committed with this id is a new part
    deliver(state.deliveries, {.host = *host,
                               .id = id,
                               .commandFile = peer::commandFilePath(state.folder, *host),
                               .request = peer::formatNewFileRequest(id),
                               .kind = L"new-file",
                               .writtenEvent = L"new-file"});
    return true;
}

bool sendCheckIn(State& state, const peer::Command& command)
{
    const auto host = chooseHost(state, command);
    if (!host)
        return false;
    const std::wstring name = state.sentFile[*host];
    state.sentFile.erase(*host);
    deliver(state.deliveries, {.host = *host,
                               .commandFile = peer::commandFilePath(state.folder, *host),
                               .request = peer::formatCheckIn(name),
                               .kind = L"check-in",
                               .writtenEvent = L"check-in",
                               .writtenFields = textField(L"name", name)});
    return true;
}

bool commit(State& state, const peer::Command& command)
{
    const std::wstring id = command.id ? numberField(L"id", *command.id) : std::wstring();
    logEvent(state.log, L"commit", textField(L"file", command.value) + id);
    return handInCommit(state, command.value, command.id);
}

bool logCheckOut(State& state, const peer::Command& command)
{
    logEvent(state.log, L"check-out", textField(L"file", command.value));
    return true;
}

bool logNotUnderstood(State& state, const std::wstring& arguments)
{
    logEvent(state.log, L"not-understood", textField(L"text", arguments));
    return false;
}

} // namespace

bool refreshHosts(State& state)
{
    std::vector<peer::Host> found = peer::findHosts();
    if (found == state.hosts)
        return false;
    found.swap(state.hosts);
    for (const peer::Host& host : state.hosts) {
        if (!isListed(found, host.process)) {
            logEvent(state.log, L"host-found",
                     numberField(L"host", host.process) + textField(L"title", host.title));
        }
    }
    for (const peer::Host& host : found) {
        if (!isListed(state.hosts, host.process)) {
            logEvent(state.log, L"host-gone", numberField(L"host", host.process));
            state.sentFile.erase(host.process);
        }
    }
    return true;
}

bool carryOut(State& state, const peer::Command& command, const std::wstring& arguments)
{
    switch (command.word) {
    case peer::Word::checkOut:
        return logCheckOut(state, command);
    case peer::Word::commit:
        return commit(state, command);
    case peer::Word::send:
        return send(state, command);
    case peer::Word::newFile:
        return sendNewFile(state, command);
    case peer::Word::checkIn:
        return sendCheckIn(state, command);
    case peer::Word::notUnderstood:
        return logNotUnderstood(state, arguments);
    default:
        return true;
    }
}

} // namespace companion
