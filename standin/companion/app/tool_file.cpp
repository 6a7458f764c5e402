#include "tool_file.h"

#include "peer/bad_lines.h"
#include "event_text.h"
#include "peer/exchange_paths.h"
#include "peer/numbers.h"
#include "peer/files.h"

namespace companion {
namespace {

LoggedEvent eventOf(const ToolRecord& record)
{
    const std::string diameter = printedDecimal(record.diameter);
    return {L"tool", numberField(L"id", record.dataId) + numberField(L"number", record.number) +
                         numberField(L"type", record.type) +
                         wordField(L"diameter", std::wstring(diameter.begin(), diameter.end())) +
                         numberField(L"operation", record.operationId) +
                         textField(L"comment", record.comment)};
}

} // namespace

std::optional<ReceivedTools> receiveTools(EventLog& log, const std::wstring& folder,
                                          std::int64_t id)
{
    const std::wstring file = toolDataPath(folder, id);
    const auto bytes = readFile(file, largestAnnouncedFile);
    if (!bytes) {
        logEvent(log, L"tool-data-unreadable", textField(L"file", file));
        return std::nullopt;
    }
    ReceivedTools tools{id, folder, {}};
    std::vector<LoggedEvent> events;
    BadLines bad;
    std::int64_t line = 0;
    for (const auto& record : readToolData(*bytes)) {
        ++line;
        if (record) {
            events.push_back(eventOf(*record));
            tools.records.push_back(*record);
        } else if (countBadLine(bad)) {
            events.push_back({L"tool-record-bad", numberField(L"line", line)});
        }
    }
    if (const std::int64_t more = untoldBadLines(bad); more != 0)
        events.push_back({L"tool-records-bad", numberField(L"lines", more)});
    logEvents(log, events);
    return tools;
}

} // namespace companion
