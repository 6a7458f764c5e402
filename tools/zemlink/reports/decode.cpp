#include "tools/zemlink/reports/decode.h"

#include "peer/bitmap_file.h"
#include "peer/debug_log.h"
#include "peer/nc_queue_file.h"
#include "peer/settings_file.h"
#include "peer/text.h"
#include "peer/tool_record.h"
#include "tools/zemlink/reports/companion_reports.h"
#include "tools/zemlink/reports/file_reports.h"
#include "tools/zemlink/reports/load_reports.h"
#include "tools/zemlink/reports/request_reports.h"
#include "tools/zemlink/reports/tool_report.h"

namespace zemlink {
namespace {

Outcome decodeCommits(std::string_view bytes)
{
    const Report report = commitsReport(bytes);
    const bool isSound = !report.contains("foreign") && !report.contains("incomplete");
    return {report, isSound ? done : problem};
}

// The entries of a file of lines, and the numbers of the lines that are not entries.
template <class Entry, class Reporter>
Outcome decodeLines(const char* name, const std::vector<std::optional<Entry>>& entries,
                    const Reporter& reportOf)
{
    Report report{{name, Report::array()}};
    for (size_t i = 0; i < entries.size(); ++i)
        if (entries[i])
            report[name].push_back(reportOf(*entries[i]));
        else
            report["badLines"].push_back(i + 1);
    return {report, report.contains("badLines") ? problem : done};
}

Report queueReport(const peer::QueueEntry& entry)
{
    return {{"ncPath", entry.pathNumber},
            {"program", peer::ansiToUtf8(entry.program)},
            {"group", peer::ansiToUtf8(entry.group)}};
}

Outcome decodeSettings(std::string_view bytes)
{
    Report report{{"lines", Report::array()}, {"inForce", settingsReport(bytes)}};
    for (const std::string& line : peer::splitSettingLines(bytes))
        report["lines"].push_back(peer::ansiToUtf8(line.substr(0, line.find('\n'))));
    if (peer::isLastSettingCut(bytes)) {
        report["remarks"].push_back("The last line has no line end: its value loses its last "
                                    "character.");
    }
    return {report, report.contains("remarks") ? problem : done};
}

Outcome decodeDebugLog(std::string_view bytes)
{
    const peer::DebugLog log = peer::parseDebugLog(bytes);
    Report report{{"loads", Report::array()}};
    for (const peer::LoggedLoad& load : log.loads)
        report["loads"].push_back(loadReport(load));
    report["steps"] = stepsReport();
    if (!log.badLines.empty())
        report["badLines"] = log.badLines;
    return {report, log.badLines.empty() ? done : problem};
}

// A recording of the notice port: notices one after the other.
Outcome decodeNotices(std::string_view bytes)
{
    Outcome outcome{Report{{"notices", Report::array()}}};
    while (!bytes.empty()) {
        const size_t end = std::min(bytes.find('\n'), bytes.size() - 1) + 1;
        const Report notice = noticeReport(bytes.substr(0, end));
        outcome.exitCode = notice["notice"] == "unknown" ? problem : outcome.exitCode;
        outcome.report["notices"].push_back(notice);
        bytes.remove_prefix(end);
    }
    return outcome;
}

Outcome decodePicture(std::string_view bytes)
{
    const auto form = peer::findBitmapForm(bytes);
    if (!form) {
        return {Report{{"remarks",
                        {"It is not a bitmap file as hosts and the add-in write it, or it is cut "
                         "short."}}},
                problem};
    }
    return {Report{{"width", form->width},
                   {"height", form->height},
                   {"bitsPerPixel", form->bits},
                   {"firstRow", form->isTopDown ? "top" : "bottom"}}};
}

Outcome decodeContent(ExchangeKind kind, std::string_view bytes)
{
    switch (kind) {
    case ExchangeKind::commandFile:
        return decodeCommand(bytes);
    case ExchangeKind::machineSettings:
        return decodeMachine(bytes);
    case ExchangeKind::checkoutAnswer:
        return decodeAnswer(bytes);
    case ExchangeKind::commitRecords:
        return decodeCommits(bytes);
    case ExchangeKind::toolData:
        return decodeLines("tools", peer::parseToolData(bytes), toolReport);
    case ExchangeKind::ncQueue:
        return decodeLines("programs", peer::parseNcQueue(bytes), queueReport);
    case ExchangeKind::notices:
        return decodeNotices(bytes);
    case ExchangeKind::picture:
        return decodePicture(bytes);
    case ExchangeKind::debugLog:
        return decodeDebugLog(bytes);
    case ExchangeKind::companionLog:
        return decodeLines("events", peer::parseCompanionLog(bytes), eventReport);
    case ExchangeKind::bookmark:
        return decodeBookmark(bytes);
    case ExchangeKind::workingCopies:
        return decodeLines("copies", peer::parseWorkingCopies(peer::fromUtf8(bytes)),
                           workingCopyReport);
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
