#include "tools/zemlink/session/recording.h"

#include "peer/exchange_paths.h"
#include "peer/files.h"
#include "peer/text.h"
#include "tools/zemlink/session/event_report.h"
#include "tools/zemlink/session/local_time.h"
#include "tools/zemlink/session/recording_space.h"
#include "tools/zemlink/session/zip_file.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <stdexcept>

namespace zemlink {
namespace {

constexpr int format = 1;
constexpr const char* indexName = "index.json";
constexpr const char* meaningKey = "meaning";

// ---- Writing ------------------------------------------------------------------------------------

// `exchanges/0001-mastercam-4711.dat`; a notice, which has no file, has the name of its event.
std::string entryName(size_t number, const ExchangeEvent& event)
{
    char digits[24];
    std::snprintf(digits, sizeof digits, "%04zu-", number);
    const bool isWholeFile = !event.file.empty();
    return std::string("exchanges/") + digits +
           (isWholeFile ? peer::toUtf8(peer::fileNameOf(event.file))
                        : std::string(eventWord(event.kind)));
}

Report indexedEvent(const ExchangeEvent& event, std::int64_t startedAt, const std::string& entry)
{
    Report report{{"at", std::max<std::int64_t>(0, event.at - startedAt)}};
    report.update(exchangeEventReport(event));
    if (!entry.empty())
        report["entry"] = entry;
    return report;
}

// A large index has no meanings, so that it can be read.
std::string indexText(Report index)
{
    std::string text = jsonText(index, JsonLayout::indented);
    if (text.size() <= mostIndexBytes)
        return text;
    for (Report& event : index["events"])
        event.erase(meaningKey);
    return jsonText(index, JsonLayout::oneLine);
}

// ---- Reading ------------------------------------------------------------------------------------

constexpr int deepestIndex = 32;                    // nested values; a report has fewer
constexpr size_t mostIndexValues = size_t{2} << 20; // an index of the largest size has fewer
constexpr const char* damagedIndex = "its index is damaged";
constexpr const char* tooLargeIndex = "its index is too large";

using Entries = std::map<std::string, std::string>;

Entries entriesOf(std::string_view bytes)
{
    Entries entries;
    for (ZipEntry& entry : parseZip(bytes))
        entries.try_emplace(std::move(entry.name), std::move(entry.bytes));
    return entries;
}

// Each entry belongs to one event, so a small file cannot fill the memory.
std::string takeBytes(Entries& entries, const std::string& name)
{
    const auto found = entries.find(name);
    if (found == entries.end())
        throw std::runtime_error(name + " is missing");
    std::string bytes = std::move(found->second);
    entries.erase(found);
    return bytes;
}

// In memory an index takes many times its size, so the number and the depth of its values are
// limited. Tested apart from the parsing: with a callback it would look at all the events before
// for each event.
void checkIndex(std::string_view text)
{
    // Long paths that are not ASCII can make the index of the most events larger than it should be.
    if (text.size() > 4 * mostIndexBytes)
        throw std::runtime_error(tooLargeIndex);
    int depth = 0;
    size_t values = 0;
    bool isInString = false;
    for (size_t at = 0; at < text.size(); ++at) {
        const char c = text[at];
        isInString = isInString != (c == '"');
        at += isInString && c == '\\' ? 1 : 0;
        if (isInString)
            continue;
        depth += c == '{' || c == '[' ? 1 : c == '}' || c == ']' ? -1 : 0;
        values += c == '{' || c == '[' || c == ',' ? 1 : 0;
        if (depth > deepestIndex)
            throw std::runtime_error(damagedIndex);
    }
    if (values > mostIndexValues)
        throw std::runtime_error(tooLargeIndex);
}

std::int64_t timeOfEvent(const Report& report)
{
    const auto time = report.at("at").get<std::int64_t>();
    if (time < 0 || time > longestRecordingMs)
        throw std::runtime_error(damagedIndex);
    return time;
}

ExchangeEvent eventOf(const Report& report, std::int64_t startedAt, Entries& entries)
{
    const auto kind = eventOfWord(report.at("event").get<std::string>());
    if (!kind)
        throw std::runtime_error("it has an event that this version does not know: " +
                                 report.at("event").get<std::string>());
    ExchangeEvent event{startedAt + timeOfEvent(report), *kind};
    if (!report.at("process").is_null())
        event.process = report["process"].get<std::uint32_t>();
    event.file = peer::fromUtf8(report.value("file", std::string()));
    if (report.contains("entry"))
        event.bytes = takeBytes(entries, report.at("entry").get<std::string>());
    return event;
}

Recording recordingOf(const Report& index, Entries& entries)
{
    if (index.at("format") != format)
        throw std::runtime_error("it has a format that this version does not know");
    const auto startedAt = parseUniversalTime(index.at("started").get<std::string>());
    Recording recording;
    recording.folder = peer::fromUtf8(index.at("folder").get<std::string>());
    if (!startedAt || recording.folder.empty() || recording.folder.size() > longestPath)
        throw std::runtime_error(damagedIndex);
    recording.startedAt = *startedAt;
    recording.isRedacted = index.at("redacted").get<bool>();
    recording.isFinished = index.at("finished").get<bool>();
    recording.status = index.at("status");
    const Report& events = index.at("events");
    if (events.size() > mostRecordedEvents)
        throw std::runtime_error("it has too many events");
    for (const Report& each : events)
        recording.events.push_back(eventOf(each, *startedAt, entries));
    return recording;
}

} // namespace

std::string formatRecording(const Recording& recording)
{
    Report index{{"format", format},
                 {"zemlink", ZEMLINK_VERSION},
                 {"started", universalTime(recording.startedAt)},
                 {"redacted", recording.isRedacted},
                 {"finished", recording.isFinished},
                 {"folder", peer::toUtf8(recording.folder)},
                 {"status", recording.status},
                 {"events", Report::array()}};
    std::vector<ZipEntry> entries(1);
    for (const ExchangeEvent& event : recording.events) {
        const std::string name = event.bytes.empty() ? "" : entryName(entries.size(), event);
        index["events"].push_back(indexedEvent(event, recording.startedAt, name));
        if (!name.empty())
            entries.push_back({name, event.bytes});
    }
    entries.front() = {indexName, indexText(std::move(index))};
    return formatZip(entries);
}

Recording parseRecording(std::string_view bytes)
{
    Entries entries = entriesOf(bytes);
    try {
        const std::string index = takeBytes(entries, indexName);
        checkIndex(index);
        return recordingOf(Report::parse(index), entries);
    } catch (const Report::exception&) {
        throw std::runtime_error(damagedIndex);
    }
}

void writeRecording(const std::wstring& path, const Recording& recording)
{
    if (!peer::replaceFile(path, formatRecording(recording)))
        throw std::runtime_error(peer::toUtf8(path) + " cannot be written");
}

Recording readRecording(const std::wstring& path)
{
    const auto bytes = peer::readFile(path);
    if (!bytes)
        throw std::runtime_error(peer::toUtf8(path) + " cannot be read");
    try {
        return parseRecording(*bytes);
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(peer::toUtf8(path) + " is not a recording: " + error.what());
    }
}

} // namespace zemlink
