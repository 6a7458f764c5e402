#include "tools/zemlink/reports/request_checks.h"

#include "peer/text.h"
#include "peer/wire_constants.h"
#include "tools/zemlink/reports/taken_requests.h"

#include <algorithm>

namespace zemlink {
namespace {

using peer::toUtf8;

bool hasCommandFiles(const Facts& facts)
{
    return !facts.commandFiles.empty();
}

void findStaleFiles(Problems& problems, const Facts& facts)
{
    for (const CommandFile& file : facts.commandFiles) {
        if (file.isProcessRunning)
            continue;
        problems.push_back(
            {"stale-command-file",
             toUtf8(file.path) + ": its process " + std::to_string(file.process) + " has ended.",
             "Delete the file."});
    }
}

bool isTooLong(const CommandFile& file)
{
    return file.bytes > peer::longestRequestBytes;
}

void addUnread(Problems& problems, const char* name, const CommandFile& file,
               const std::string& what)
{
    problems.push_back({name, toUtf8(file.path) + what + ": the add-in has stopped reading it.",
                        "Restart the host, process " + std::to_string(file.process) + "."});
}

void findTooLongFiles(Problems& problems, const Facts& facts)
{
    for (const CommandFile& file : facts.commandFiles)
        if (file.isProcessRunning && isTooLong(file))
            addUnread(problems, "command-file-too-long", file,
                      " holds " + std::to_string(file.bytes) + " bytes");
}

void findUntakenRequests(Problems& problems, const Facts& facts)
{
    for (const CommandFile& file : facts.commandFiles)
        if (file.isProcessRunning && !isTooLong(file) && file.isLeft)
            addUnread(problems, "request-not-taken", file,
                      " has held a request of " + std::to_string(file.bytes) +
                          " bytes for two seconds");
}

std::string nameOf(const TakenRequest& request)
{
    return "Request " + std::to_string(request.id) +
           (request.file.empty() ? "" : " (" + request.file + ")");
}

struct PendingCause {
    const char* what;
    const char* advice;
};

// Why the host does not begin the load. A host reports a backplot only to its add-in, so that it is
// what remains.
PendingCause pendingCause(const Host& host)
{
    if (!host.isAnswering)
        return {"the host does not answer messages",
                "Wait until the host has finished its work, else end it and send the file again."};
    if (!host.hasMessageWindow)
        return {"the host has no message window", "Restart the host, then send the file again."};
    if (host.isBlocked)
        return {"a dialog is open in the host", "End the dialog; the host opens the file then."};
    return {"the host's window takes input, so that a backplot runs in it",
            "End the backplot; the host opens the file then."};
}

void findPendingRequests(Problems& problems, const Facts& facts)
{
    for (const TakenRequest& request : takenRequests(facts)) {
        const auto host = std::ranges::find(facts.hosts, request.host, &Host::process);
        if (request.state != RequestState::pending || host == facts.hosts.end())
            continue;
        const PendingCause cause = pendingCause(*host);
        problems.push_back({"request-pending",
                            nameOf(request) + " has been taken by the host with process " +
                                std::to_string(request.host) +
                                ", but its load has not begun: " + cause.what + ".",
                            cause.advice});
    }
}

void findSupersededRequests(Problems& problems, const Facts& facts)
{
    for (const TakenRequest& request : takenRequests(facts)) {
        if (request.state != RequestState::superseded)
            continue;
        problems.push_back({"request-superseded",
                            nameOf(request) +
                                " was replaced by a later one before the host with "
                                "process " +
                                std::to_string(request.host) +
                                " was ready: " + toUtf8(request.settings) + " is left.",
                            "Send the file again if it is still needed; else delete the machine "
                            "settings."});
    }
}

std::string leftCause(RequestState state)
{
    switch (state) {
    case RequestState::hostEnded:
        return "its host has ended";
    case RequestState::fileMissing:
        return "the host found no such file";
    case RequestState::notOpened:
        return "the host could not open the file";
    default:
        return "its host is not known";
    }
}

bool isLeft(RequestState state)
{
    return state == RequestState::hostEnded || state == RequestState::fileMissing ||
           state == RequestState::notOpened || state == RequestState::unknown;
}

void findLeftSettings(Problems& problems, const Facts& facts)
{
    for (const TakenRequest& request : takenRequests(facts)) {
        if (!isLeft(request.state))
            continue;
        problems.push_back(
            {"machine-settings-left",
             toUtf8(request.settings) + ": no host has loaded the file of this request; " +
                 leftCause(request.state) + ".",
             "Send the file again if it is still needed; else delete the machine settings."});
    }
}

} // namespace

std::vector<Check> requestChecks()
{
    return {
        {"stale-command-file", "Every command file belongs to a running process.", findStaleFiles,
         hasCommandFiles},
        {"command-file-too-long", "No command file is too long.", findTooLongFiles,
         hasCommandFiles},
        {"request-not-taken", "No request stays in a command file.", findUntakenRequests,
         hasCommandFiles},
        {"request-pending", "No request with machine settings waits in a host.",
         findPendingRequests, always},
        {"request-superseded", "No request with machine settings was replaced before its load.",
         findSupersededRequests, always},
        {"machine-settings-left", "No machine settings are left.", findLeftSettings, always},
    };
}

} // namespace zemlink
