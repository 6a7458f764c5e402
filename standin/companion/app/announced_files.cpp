#include "standin/companion/app/announced_files.h"

#include "peer/exchange_paths.h"
#include "peer/files.h"
#include "peer/numbers.h"
#include "peer/text.h"
#include "standin/companion/log/event_text.h"

#include <windows.h>

namespace companion {
namespace {

constexpr std::int64_t mostBadLinesLogged = 20;

struct BadLines {
    std::int64_t count = 0;
};

// Counts a line; true when it is logged individually.
bool countBadLine(BadLines& lines)
{
    return ++lines.count <= mostBadLinesLogged;
}

// The number of lines that were not logged individually.
std::int64_t unloggedBadLines(const BadLines& lines)
{
    return lines.count > mostBadLinesLogged ? lines.count - mostBadLinesLogged : 0;
}

QueuedProgram queuedProgram(const peer::QueueEntry& entry)
{
    QueuedProgram program{entry.pathNumber, peer::fromAnsi(entry.program),
                          peer::fromAnsi(entry.group)};
    if (peer::mayBeRemote(program.file))
        program.bytes = notRead;
    else if (peer::isFile(program.file))
        program.bytes = static_cast<std::int64_t>(peer::fileSize(program.file));
    return program;
}

LoggedEvent eventOf(const QueuedProgram& program)
{
    return {L"nc-program",
            numberField(L"number", program.pathNumber) + textField(L"file", program.file) +
                numberField(L"bytes", program.bytes) + textField(L"group", program.group)};
}

std::wstring wholePath(const std::wstring& path)
{
    std::wstring whole(GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
    whole.resize(
        GetFullPathNameW(path.c_str(), static_cast<DWORD>(whole.size()), whole.data(), nullptr));
    return whole;
}

// Any local program can send a notice with any path, so only the queue of an add-in is deleted.
bool isOfAnAddIn(const std::wstring& file, const std::wstring& folder)
{
    const std::wstring name = peer::fileNameOf(file);
    const std::wstring own = wholePath(folder + L"\\temp\\" + name);
    return peer::isQueueFileName(name) &&
           CompareStringOrdinal(wholePath(file).c_str(), -1, own.c_str(), -1, TRUE) == CSTR_EQUAL;
}

// Renames an add-in's queue before it is read: what the host writes meanwhile is the next queue,
// which must not be deleted with this one. False when the file stays: it is too large, or a host is
// writing it and will announce it again.
bool moveAside(const std::wstring& file, const std::wstring& aside)
{
    return peer::fileSize(file) <= peer::largestAnnouncedFile &&
           MoveFileExW(file.c_str(), aside.c_str(), MOVEFILE_REPLACE_EXISTING);
}

std::optional<std::string> takeQueue(const std::wstring& file, const std::wstring& folder)
{
    const std::wstring aside = file + L".taken";
    if (!isOfAnAddIn(file, folder) || !moveAside(file, aside))
        return peer::readFile(file, peer::largestAnnouncedFile);
    auto bytes = peer::readFile(aside, peer::largestAnnouncedFile);
    if (bytes)
        DeleteFileW(aside.c_str());
    return bytes;
}

LoggedEvent eventOf(const peer::ToolRecord& record)
{
    const std::string diameter = peer::formatDecimal(record.diameter);
    return {L"tool", numberField(L"id", record.dataId) + numberField(L"number", record.number) +
                         numberField(L"type", record.type) +
                         wordField(L"diameter", std::wstring(diameter.begin(), diameter.end())) +
                         numberField(L"operation", record.operationId) +
                         textField(L"comment", record.comment)};
}

std::wstring decimal(double number)
{
    const std::string text = peer::formatDecimal(number);
    return {text.begin(), text.end()};
}

} // namespace

std::optional<ReceivedQueue> receiveQueue(EventLog& log, const std::wstring& folder,
                                          const std::wstring& file)
{
    const auto bytes = takeQueue(file, folder);
    if (!bytes) {
        logEvent(log, L"nc-queue-unreadable", textField(L"file", file));
        return std::nullopt;
    }
    ReceivedQueue queue{file, {}};
    std::vector<LoggedEvent> events;
    BadLines bad;
    std::int64_t line = 0;
    for (const auto& entry : peer::parseNcQueue(*bytes)) {
        ++line;
        if (entry) {
            queue.programs.push_back(queuedProgram(*entry));
            events.push_back(eventOf(queue.programs.back()));
        } else if (countBadLine(bad)) {
            events.push_back({L"nc-queue-line-bad", numberField(L"line", line)});
        }
    }
    if (const std::int64_t more = unloggedBadLines(bad); more != 0)
        events.push_back({L"nc-queue-lines-bad", numberField(L"lines", more)});
    logEvents(log, events);
    return queue;
}

std::optional<ReceivedTools> receiveTools(EventLog& log, const std::wstring& folder,
                                          std::int64_t id)
{
    const std::wstring file = peer::toolDataPath(folder, id);
    const auto bytes = peer::readFile(file, peer::largestAnnouncedFile);
    if (!bytes) {
        logEvent(log, L"tool-data-unreadable", textField(L"file", file));
        return std::nullopt;
    }
    ReceivedTools tools{id, folder, {}};
    std::vector<LoggedEvent> events;
    BadLines bad;
    std::int64_t line = 0;
    for (const auto& record : peer::parseToolData(*bytes)) {
        ++line;
        if (record) {
            events.push_back(eventOf(*record));
            tools.records.push_back(*record);
        } else if (countBadLine(bad)) {
            events.push_back({L"tool-record-bad", numberField(L"line", line)});
        }
    }
    if (const std::int64_t more = unloggedBadLines(bad); more != 0)
        events.push_back({L"tool-records-bad", numberField(L"lines", more)});
    logEvents(log, events);
    return tools;
}

std::vector<std::wstring> toolCells(const peer::ToolRecord& record)
{
    return {std::to_wstring(record.number), std::to_wstring(record.type), decimal(record.diameter),
            std::to_wstring(record.operationId), record.comment};
}

std::vector<std::vector<std::wstring>> toolDetails(const peer::ToolRecord& record)
{
    return {{L"Corner radius", decimal(record.cornerRadius)},
            {L"Tip angle", decimal(record.tipAngle)},
            {L"Flutes", std::to_wstring(record.flutes)},
            {L"Flute length", decimal(record.fluteLength)},
            {L"Shoulder length", decimal(record.shoulderLength)},
            {L"Shoulder diameter", decimal(record.shoulderDiameter)},
            {L"Overall length", decimal(record.overallLength)},
            {L"Arbor diameter", decimal(record.arborDiameter)},
            {L"Holder diameter", decimal(record.holderDiameter)},
            {L"Holder length", decimal(record.holderLength)},
            {L"Spindle speed", std::to_wstring(record.spindleSpeed)},
            {L"Feed", decimal(record.feed)},
            {L"Plunge rate", decimal(record.plungeRate)},
            {L"Retract rate", decimal(record.retractRate)},
            {L"Length offset", std::to_wstring(record.lengthOffset)},
            {L"Diameter offset", std::to_wstring(record.diameterOffset)},
            {L"Depth", decimal(record.depth)},
            {L"Cycle time, seconds", decimal(record.seconds)}};
}

} // namespace companion
