#include "tools/zemlink/session/event_report.h"

#include "peer/exchange_paths.h"
#include "peer/text.h"
#include "tools/zemlink/reports/decode.h"
#include "tools/zemlink/reports/file_reports.h"
#include "tools/zemlink/reports/load_reports.h"

#include <algorithm>
#include <iterator>

namespace zemlink {
namespace {

constexpr size_t partiesWidth = 24; // of `host 4711 <- Companion`, so that most lines align

bool goesAcross(EventKind kind)
{
    switch (kind) {
    case EventKind::machineSettingsWritten:
    case EventKind::requestWritten:
    case EventKind::pictureWritten:
    case EventKind::commitWritten:
    case EventKind::ncQueueWritten:
    case EventKind::toolDataWritten:
    case EventKind::answerWritten:
    case EventKind::notice:
        return true;
    default:
        return false;
    }
}

// The process of a commit is the Companion's; that of every other exchange is the host's.
bool isProcessOfCompanion(EventKind kind)
{
    return kind == EventKind::companionStarted || kind == EventKind::companionEnded ||
           kind == EventKind::commitWritten || kind == EventKind::commitTaken;
}

std::string named(std::string_view name, bool hasProcess, std::uint32_t process)
{
    return std::string(name) +
           (hasProcess && process != 0 ? ' ' + std::to_string(process) : std::string());
}

std::string parties(const ExchangeEvent& event)
{
    const bool isOfCompanion = isProcessOfCompanion(event.kind);
    const std::string host = named("host", !isOfCompanion, event.process);
    const std::string companion = named("Companion", isOfCompanion, event.process);
    const bool isByHost = sideOf(event.kind) == Side::host;
    if (!goesAcross(event.kind))
        return isByHost ? host : companion;
    return host + (isByHost ? " -> " : " <- ") + companion;
}

// One record or, if it is none, what a commit file with these bytes would be.
Report recordReport(std::string_view bytes)
{
    Report report = commitsReport(bytes);
    if (report["records"].size() != 1 || report.contains("foreign"))
        return report;
    Report record = report["records"][0];
    record.erase("at");
    return record;
}

Report meaningOf(EventKind kind, std::string_view bytes)
{
    switch (kind) {
    case EventKind::loadStep:
        return stepReport(bytes);
    case EventKind::commitWritten:
    case EventKind::commitTaken:
        return recordReport(bytes);
    case EventKind::notice:
        return noticeReport(bytes);
    default: {
        Report report = decode(*contentOf(kind), bytes).report;
        report.erase("kind");
        report.erase("bytes");
        return report;
    }
    }
}

std::string_view title(EventKind kind)
{
    constexpr std::string_view titles[] = {
        "started",
        "ended",
        "started",
        "ended",
        "machine settings:",
        "request:",
        "request taken:",
        "machine settings taken:",
        "load",
        "picture:",
        "commit:",
        "commit taken:",
        "NC queue:",
        "tool data:",
        "check-out answer:",
        "notice:",
    };
    static_assert(std::size(titles) == static_cast<size_t>(EventKind::notice) + 1);
    return titles[static_cast<size_t>(kind)];
}

// The values that need no label in a line.
bool isClearAlone(std::string_view key)
{
    constexpr std::string_view keys[] = {"request", "notice", "answer", "path",
                                         "file",    "name",   "text",   "reached"};
    return std::ranges::find(keys, key) != std::end(keys);
}

std::string label(const std::string& key)
{
    const std::string line = asText(Report{{key, ""}});
    return line.substr(0, line.find(':'));
}

std::string count(const std::string& key, size_t number)
{
    const std::string one = key.substr(0, key.size() - (key.ends_with('s') ? 1 : 0));
    return std::to_string(number) + ' ' + (number == 1 ? one : key);
}

std::string words(const std::string& key, const Report& value)
{
    if (value.is_null())
        return "no " + label(key);
    if (key == "remarks") {
        std::string all;
        for (const Report& remark : value)
            all += (all.empty() ? "(" : " ") + remark.get<std::string>();
        return all + ')';
    }
    if (value.is_array())
        return count(label(key), value.size());
    const std::string text = value.is_string() ? value.get<std::string>() : value.dump();
    return isClearAlone(key) ? text : label(key) + ' ' + text;
}

std::string lineOf(const Report& meaning)
{
    std::string line;
    for (const auto& [key, value] : meaning.items())
        line += (line.empty() ? "" : " ") + words(key, value);
    return line;
}

// A queue without programs and tool data without tools are empty files; of other events without
// bytes the content is not known.
bool isContentKnown(const ExchangeEvent& event)
{
    return !event.bytes.empty() || event.kind == EventKind::ncQueueWritten ||
           event.kind == EventKind::toolDataWritten;
}

bool isWholeFile(EventKind kind)
{
    return kind == EventKind::pictureWritten || kind == EventKind::ncQueueWritten ||
           kind == EventKind::toolDataWritten;
}

} // namespace

std::optional<ExchangeKind> contentOf(EventKind kind)
{
    switch (kind) {
    case EventKind::companionStarted:
    case EventKind::companionEnded:
    case EventKind::hostStarted:
    case EventKind::hostEnded:
        return std::nullopt;
    case EventKind::machineSettingsWritten:
    case EventKind::machineSettingsTaken:
        return ExchangeKind::machineSettings;
    case EventKind::requestWritten:
    case EventKind::requestTaken:
        return ExchangeKind::commandFile;
    case EventKind::loadStep:
        return ExchangeKind::debugLog;
    case EventKind::pictureWritten:
        return ExchangeKind::picture;
    case EventKind::commitWritten:
    case EventKind::commitTaken:
        return ExchangeKind::commitRecords;
    case EventKind::ncQueueWritten:
        return ExchangeKind::ncQueue;
    case EventKind::toolDataWritten:
        return ExchangeKind::toolData;
    case EventKind::answerWritten:
        return ExchangeKind::checkoutAnswer;
    case EventKind::notice:
        return ExchangeKind::notices;
    }
    return std::nullopt;
}

Report exchangeEventReport(const ExchangeEvent& event)
{
    const bool isByHost = sideOf(event.kind) == Side::host;
    Report report{{"event", eventWord(event.kind)}, {"by", isByHost ? "host" : "companion"}};
    if (goesAcross(event.kind))
        report["to"] = isByHost ? "companion" : "host";
    report["process"] = event.process != 0 ? Report(event.process) : Report();
    if (!event.file.empty())
        report["file"] = peer::toUtf8(event.file);
    if (contentOf(event.kind)) {
        report["bytes"] = event.bytes.size();
        if (isContentKnown(event))
            report["meaning"] = meaningOf(event.kind, event.bytes);
    }
    return report;
}

std::string exchangeEventText(const ExchangeEvent& event)
{
    std::string line = parties(event);
    line.resize(std::max(line.size(), partiesWidth), ' ');
    line += std::string("  ") += title(event.kind);
    if (contentOf(event.kind)) {
        line += ' ' + (isContentKnown(event) ? lineOf(meaningOf(event.kind, event.bytes))
                                             : "its content is not known");
        if (isWholeFile(event.kind))
            line += ' ' + peer::toUtf8(peer::fileNameOf(event.file));
    }
    return visible(line);
}

} // namespace zemlink
