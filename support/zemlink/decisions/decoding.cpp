#include "zemlink/decisions/decoding.h"

#include "decisions/ncqueue.h"
#include "decisions/toolrecord.h"
#include "text.h"
#include "zemlink/decisions/commandtext.h"
#include "zemlink/decisions/machinetext.h"
#include "zemlink/decisions/settingstext.h"
#include "zemlink/decisions/toolreport.h"
#include "zemlink/decisions/waitingcommits.h"

namespace zemlink {
namespace {

std::string ansi(std::string_view bytes)
{
    return companion::toUtf8(companion::fromAnsi(bytes));
}

Outcome decodeCommand(std::string_view bytes)
{
    const CommandText text = readCommandText(bytes);
    Report report{{"request", requestName(text.kind)}};
    if (text.kind == RequestKind::open || text.kind == RequestKind::newFile) {
        report["id"] = text.id;
    }
    if (text.kind == RequestKind::open) {
        report["path"] = ansi(text.path);
    }
    if (text.kind == RequestKind::checkIn) {
        report["name"] = ansi(text.path);
    }
    if (!text.remarks.empty()) {
        report["remarks"] = text.remarks;
    }
    return {report, text.remarks.empty() ? done : trouble};
}

Outcome decodeMachine(std::string_view bytes)
{
    const auto text = readMachineText(bytes);
    if (!text) {
        return {Report{{"remarks", {"The file is empty: nothing is read from it."}}}, trouble};
    }
    Report report{{"id", ansi(text->id)},
                  {"ncPath", nullptr},
                  {"secondNumber", nullptr},
                  {"machine", ansi(text->machine)}};
    if (text->ncPath) {
        report["ncPath"] = *text->ncPath;
    }
    if (text->secondNumber) {
        report["secondNumber"] = *text->secondNumber;
    }
    if (text->hasMore) {
        report["remarks"].push_back("Lines follow the first; nobody reads them.");
    }
    const bool isWhole = text->ncPath && text->secondNumber && !text->machine.empty();
    return {report, isWhole && !text->hasMore ? done : trouble};
}

Outcome decodeCommits(std::string_view bytes)
{
    const Report report = commitsReport(bytes);
    const bool isSound = !report.contains("foreign") && !report.contains("incomplete");
    return {report, isSound ? done : trouble};
}

// The entries of a file of lines, and the numbers of those lines that are none.
template <class Entry, class Reporter>
Outcome decodeLines(const char* name, const std::vector<std::optional<Entry>>& entries,
                    const Reporter& reportOf)
{
    Report report{{name, Report::array()}};
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (entries[i]) {
            report[name].push_back(reportOf(*entries[i]));
        } else {
            report["badLines"].push_back(i + 1);
        }
    }
    return {report, report.contains("badLines") ? trouble : done};
}

Report queueReport(const companion::QueueEntry& entry)
{
    return {{"ncPath", entry.pathNumber},
            {"program", ansi(entry.program)},
            {"group", ansi(entry.group)}};
}

Outcome decodeSettings(std::string_view bytes)
{
    Report report{{"lines", Report::array()}, {"inForce", settingsInForce(bytes)}};
    for (const std::string& line : settingLines(bytes)) {
        report["lines"].push_back(ansi(line.substr(0, line.find('\n'))));
    }
    if (isLastSettingCut(bytes)) {
        report["remarks"].push_back("The last line has no line end: its value loses its last "
                                    "character.");
    }
    return {report, report.contains("remarks") ? trouble : done};
}

Outcome decodeContent(ExchangeKind kind, std::string_view bytes)
{
    switch (kind) {
    case ExchangeKind::commandFile:
        return decodeCommand(bytes);
    case ExchangeKind::machineSettings:
        return decodeMachine(bytes);
    case ExchangeKind::commitRecords:
        return decodeCommits(bytes);
    case ExchangeKind::toolData:
        return decodeLines("tools", companion::readToolData(bytes), toolReport);
    case ExchangeKind::ncQueue:
        return decodeLines("programs", companion::readQueue(bytes), queueReport);
    case ExchangeKind::settings:
        break;
    }
    return decodeSettings(bytes);
}

} // namespace

Outcome decode(ExchangeKind kind, std::string_view bytes)
{
    Outcome content = decodeContent(kind, bytes);
    Report report{{"kind", kindWord(kind)}, {"bytes", bytes.size()}};
    report.update(content.report);
    return {report, content.exitCode};
}

} // namespace zemlink
