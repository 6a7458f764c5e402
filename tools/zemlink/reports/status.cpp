#include "tools/zemlink/reports/status.h"

#include "peer/text.h"
#include "peer/wire_constants.h"
#include "tools/zemlink/reports/file_reports.h"
#include "tools/zemlink/reports/port_owner.h"
#include "tools/zemlink/reports/request_reports.h"
#include "tools/zemlink/reports/taken_requests.h"

#include <algorithm>

namespace zemlink {
namespace {

using peer::toUtf8;

std::string sourceText(peer::FolderSource source)
{
    return source == peer::FolderSource::registry ? "registry value" : "default, no registry value";
}

Report installationReport(const Facts& facts)
{
    return {{"folder", toUtf8(facts.folder.path)},
            {"from", sourceText(facts.folder.source)},
            {"exists", facts.folderFound.isFine()}};
}

Report settingsFileReport(const Facts& facts)
{
    if (!facts.settings) {
        return {{"file", false},
                {"noFile", "There is no settings file; the defaults apply."},
                {"defaults", settingsReport("")}};
    }
    Report report{{"file", true}};
    report.update(settingsReport(*facts.settings));
    return report;
}

// Null when it is unknown.
Report known(const std::string& text)
{
    return text.empty() ? Report() : Report(text);
}

Report companionReport(const Companion& companion)
{
    Report report{{"running", companion.isRunning}, {"window", nullptr}};
    if (companion.process) {
        report["window"] = toUtf8(companion.title);
        report["process"] = *companion.process;
        report["program"] = toUtf8(companion.program);
        report["version"] = known(companion.version);
    }
    return report;
}

Report commandFileReport(const Facts& facts, std::uint32_t process)
{
    const auto file =
        std::find_if(facts.commandFiles.begin(), facts.commandFiles.end(),
                     [&](const CommandFile& each) { return each.process == process; });
    if (file == facts.commandFiles.end())
        return nullptr;
    Report report{{"path", toUtf8(file->path)}, {"bytes", file->bytes}};
    if (!file->content.empty())
        report["content"] = decodeCommand(file->content).report;
    return report;
}

std::string stateText(RequestState state)
{
    switch (state) {
    case RequestState::notTaken:
        return "not taken yet";
    case RequestState::loading:
        return "being opened";
    case RequestState::pending:
        return "taken, waits until the host is ready";
    case RequestState::superseded:
        return "replaced by a later one";
    default:
        return "not opened";
    }
}

// The open requests whose machine settings are still in temp.
Report waitingRequests(const std::vector<TakenRequest>& requests, std::uint32_t process)
{
    Report waiting = Report::array();
    for (const TakenRequest& request : requests) {
        if (request.host != process)
            continue;
        Report report{{"id", request.id}, {"state", stateText(request.state)}};
        if (!request.file.empty())
            report["file"] = request.file;
        report["machineSettings"] = toUtf8(request.settings);
        waiting.push_back(report);
    }
    return waiting;
}

Report addInReport(const Host& host)
{
    if (host.addIn.empty())
        return nullptr;
    return {{"path", toUtf8(host.addIn)}, {"version", host.addInVersion}};
}

Report hostsReport(const Facts& facts)
{
    Report hosts = Report::array();
    const std::vector<TakenRequest> requests = takenRequests(facts);
    for (const Host& host : facts.hosts) {
        hosts.push_back(Report{{"process", host.process},
                               {"title", toUtf8(host.title)},
                               {"answers", host.isAnswering},
                               {"program", known(toUtf8(host.program))},
                               {"version", known(host.version)},
                               {"addIn", addInReport(host)},
                               {"commandFile", commandFileReport(facts, host.process)},
                               {"requestsWaiting", waitingRequests(requests, host.process)}});
    }
    return hosts;
}

Report commitsWaiting(const Facts& facts)
{
    Report files = Report::array();
    for (const CommitFile& file : facts.commitFiles) {
        if (file.waiting && file.waiting->empty())
            continue;
        Report report{{"file", toUtf8(file.path)}, {"processRunning", file.isProcessRunning}};
        if (!file.hasBookmark)
            report["noBookmark"] = "It is unknown which of these commits have been taken.";
        if (file.waiting)
            report.update(commitsReport(*file.waiting, static_cast<size_t>(file.taken)));
        else
            report["beingWritten"] = true;
        files.push_back(report);
    }
    return files;
}

Report portReport(const Facts& facts)
{
    const Port& port = facts.port;
    Report report{{"number", peer::noticePort}, {"answers", port.answer.isFine()}};
    if (port.answer.isFine() && portOwner(facts) == PortOwner::unknown)
        report["answers"] = "unknown";
    if (!port.answer.isFine())
        report["cause"] = port.answer.text;
    if (port.answer.isFine() || port.holder)
        report["owner"] = portOwnerText(facts);
    if (port.holder) {
        report["process"] = *port.holder;
        report["program"] = toUtf8(port.program);
    }
    return report;
}

} // namespace

Report statusReport(const Facts& facts)
{
    return {{"zemlink", facts.toolVersion},
            {"installation", installationReport(facts)},
            {"settings", settingsFileReport(facts)},
            {"companion", companionReport(facts.companion)},
            {"hosts", hostsReport(facts)},
            {"commitsWaiting", commitsWaiting(facts)},
            {"port", portReport(facts)}};
}

} // namespace zemlink
