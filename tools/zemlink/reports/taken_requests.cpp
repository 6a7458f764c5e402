#include "tools/zemlink/reports/taken_requests.h"

#include "peer/command_file.h"
#include "peer/text.h"

#include <algorithm>

namespace zemlink {
namespace {

// The host whose command file has the request; 0 when none has.
std::uint32_t hostOfUntaken(const Facts& facts, std::int32_t id)
{
    for (const CommandFile& file : facts.commandFiles) {
        const peer::HostCommand command = peer::parseHostCommand(file.content);
        if (command.kind == peer::HostCommandKind::open && command.id == id)
            return file.process;
    }
    return 0;
}

const Host* findHost(const Facts& facts, std::uint32_t process)
{
    const auto host = std::ranges::find(facts.hosts, process, &Host::process);
    return host == facts.hosts.end() ? nullptr : &*host;
}

// The request and its successors, for the same host.
struct Sent {
    const SentRequest* request = nullptr;
    bool isReplaced = false;
};

Sent findSent(const Facts& facts, std::int32_t id)
{
    Sent sent;
    for (const SentRequest& each : facts.sentRequests)
        if (each.id == id)
            sent = {&each, false};
        else if (sent.request && each.host == sent.request->host)
            sent.isReplaced = true;
    return sent;
}

bool isNewestSettings(const Facts& facts, const MachineSettingsFile& file)
{
    return std::ranges::none_of(
        facts.machineSettings,
        [&](const MachineSettingsFile& each) { return each.written > file.written; });
}

// Whether the only host has loaded another file since the settings were written: a request that the
// Companion did not log.
bool isAnotherLoaded(const Facts& facts, const MachineSettingsFile& settings,
                     const std::string& file)
{
    return facts.hosts.size() == 1 && !facts.loads.empty() &&
           facts.lastLoadWritten > settings.written && facts.loads.back().isFinished() &&
           peer::ansiToUtf8(facts.loads.back().file) != file;
}

// The last load of the file that began after the request was written.
const peer::LoggedLoad* findLoad(const Facts& facts, const MachineSettingsFile& settings,
                                 const std::string& file)
{
    const auto load =
        std::find_if(facts.loads.rbegin(), facts.loads.rend(), [&](const peer::LoggedLoad& each) {
            return peer::ansiToUtf8(each.file) == file;
        });
    const bool isLater = facts.lastLoadWritten >= settings.written;
    return load == facts.loads.rend() || !isLater ? nullptr : &*load;
}

// Of the last request for a running host.
RequestState stateInHost(const Facts& facts, const MachineSettingsFile& settings,
                         const std::string& file, const Host& host)
{
    const peer::LoggedLoad* load = file.empty() ? nullptr : findLoad(facts, settings, file);
    if (load && !load->isFinished()) {
        // The load runs on the thread that answers messages.
        return host.isAnswering && !host.isBlocked ? RequestState::notOpened
                                                   : RequestState::loading;
    }
    const bool isMissing = std::ranges::find(facts.missingFiles, file) != facts.missingFiles.end();
    return isMissing && !host.isBlocked ? RequestState::fileMissing : RequestState::pending;
}

TakenRequest takenRequest(const Facts& facts, const MachineSettingsFile& settings)
{
    TakenRequest taken{settings.path, settings.id};
    taken.host = hostOfUntaken(facts, settings.id);
    if (taken.host != 0) {
        taken.state = RequestState::notTaken;
        return taken;
    }
    const Sent sent = findSent(facts, settings.id);
    if (sent.request) {
        taken.host = sent.request->host;
        taken.file = sent.request->file;
    } else if (facts.hosts.size() == 1) {
        taken.host = facts.hosts[0].process;
    }
    const Host* host = findHost(facts, taken.host);
    const bool isReplaced = (sent.request ? sent.isReplaced : !isNewestSettings(facts, settings)) ||
                            isAnotherLoaded(facts, settings, taken.file);
    if (taken.host == 0)
        taken.state = facts.hosts.empty() ? RequestState::hostEnded : RequestState::unknown;
    else if (isReplaced)
        taken.state = RequestState::superseded;
    else if (!host)
        taken.state = RequestState::hostEnded;
    else
        taken.state = stateInHost(facts, settings, taken.file, *host);
    return taken;
}

} // namespace

std::vector<TakenRequest> takenRequests(const Facts& facts)
{
    std::vector<TakenRequest> requests;
    for (const MachineSettingsFile& settings : facts.machineSettings)
        requests.push_back(takenRequest(facts, settings));
    return requests;
}

} // namespace zemlink
