#include "toolfile.h"

#include "decisions/eventtext.h"
#include "decisions/exchangepaths.h"
#include "decisions/numbers.h"
#include "files.h"

namespace companion {
namespace {

void logTool(EventLog& log, const ToolRecord& record)
{
    const std::string diameter = printedDecimal(record.diameter);
    logEvent(log, L"tool",
             numberField(L"id", record.dataId) + numberField(L"number", record.number) +
                 numberField(L"type", record.type) +
                 wordField(L"diameter", std::wstring(diameter.begin(), diameter.end())) +
                 numberField(L"operation", record.operationId) +
                 textField(L"comment", record.comment));
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
    std::int64_t line = 0;
    for (const auto& record : readToolData(*bytes)) {
        ++line;
        if (record) {
            logTool(log, *record);
            tools.records.push_back(*record);
        } else {
            logEvent(log, L"tool-record-bad", numberField(L"line", line));
        }
    }
    return tools;
}

} // namespace companion
