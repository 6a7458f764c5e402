#include "tools/zemlink/reports/answers.h"

#include "peer/text.h"
#include "tools/zemlink/reports/load_reports.h"

#include <algorithm>

namespace zemlink {
namespace {

HostChoice chooseNamed(const std::vector<peer::Host>& hosts, std::uint32_t named)
{
    const bool isFound = std::any_of(hosts.begin(), hosts.end(),
                                     [&](const peer::Host& host) { return host.process == named; });
    if (!isFound) {
        return {std::nullopt,
                "process " + std::to_string(named) + " is not a running host with the add-in",
                "not-a-host"};
    }
    return {named};
}

} // namespace

HostChoice chooseHost(const std::vector<peer::Host>& hosts, std::optional<std::uint32_t> named)
{
    if (named)
        return chooseNamed(hosts, *named);
    if (hosts.empty())
        return {std::nullopt, "no host with the add-in is running", "no-host"};
    if (hosts.size() == 1)
        return {hosts.front().process};
    std::string reason = "several hosts are running, choose one with --host:";
    for (const peer::Host& host : hosts) {
        reason += (host == hosts.front() ? " " : ", ") + std::to_string(host.process) + " (" +
                  peer::toUtf8(host.title) + ")";
    }
    return {std::nullopt, reason, "several-hosts"};
}

std::string answerText(peer::Verdict verdict, const std::string& cause)
{
    switch (verdict) {
    case peer::Verdict::taken:
        return "The host has taken the request.";
    case peer::Verdict::full:
        return cause.empty() ? "Nothing was written: an earlier request is still in the command "
                               "file, the host does not read it."
                             : "Nothing was written, the command file cannot be written: " + cause;
    case peer::Verdict::missing:
        return "Nothing was written: the command file does not exist. The add-in is not open, uses "
               "another folder, or has stopped listening.";
    case peer::Verdict::notTaken:
        return "The host has not taken the request. It is still in the command file and is carried "
               "out if the host continues.";
    case peer::Verdict::lost:
        return "The command file disappeared with the request: the host has ended.";
    case peer::Verdict::wait:
    case peer::Verdict::write:
        break;
    }
    return "It is still in progress.";
}

Outcome answerOutcome(Report request, std::uint32_t host, peer::Verdict verdict,
                      const std::string& cause)
{
    const bool isTaken = verdict == peer::Verdict::taken;
    request["host"] = host;
    request["taken"] = isTaken;
    request["answer"] = answerText(verdict, cause);
    return {request, isTaken ? done : notTaken};
}

Outcome openedOutcome(Report taken, const peer::LoggedLoad& load)
{
    const bool isOpened = load.isFinished();
    taken["answer"] = isOpened ? "The host has opened the file."
                               : "The host has taken the request, but has not opened the file in "
                                 "this time. A request that waits is carried out when no dialog is "
                                 "open and no backplot runs.";
    taken["opened"] = isOpened;
    taken["lastStep"] = load.lastStep;
    taken["reached"] = reachedText(load);
    return {taken, isOpened ? done : notOpened};
}

std::string portTakenText(const std::string& error, const Port& port, bool isCompanionRunning)
{
    const std::string text = "port 4559 cannot be opened: " + error;
    if (port.holder) {
        const std::string program =
            port.program.empty() ? "" : " (" + peer::toUtf8(port.program) + ")";
        return text + "; process " + std::to_string(*port.holder) + program + " uses it";
    }
    return text + (isCompanionRunning ? "; the Companion is running, end it first"
                                      : "; another program seems to use it");
}

} // namespace zemlink
