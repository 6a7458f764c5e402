#include "standin/companion/log/event_log.h"

#include "peer/companion_log.h"
#include "peer/files.h"
#include "peer/text.h"
#include "standin/companion/log/event_text.h"
#include "standin/companion/log/status_text.h"

#include <utility>

namespace companion {
namespace {

Moment now()
{
    SYSTEMTIME time{};
    GetLocalTime(&time);
    return {time.wYear,   time.wMonth,  time.wDay,         time.wHour,
            time.wMinute, time.wSecond, time.wMilliseconds};
}

std::wstring statusOf(const std::string& line)
{
    const auto events = peer::parseCompanionLog(line);
    return events.empty() || !events.front() ? std::wstring() : statusText(*events.front());
}

EventRow makeRow(const Moment& moment, std::wstring_view event, const std::wstring& fields,
                 const std::string& line)
{
    return {timeOfDay(moment), eventTitle(event), fields.empty() ? fields : fields.substr(1),
            statusOf(line)};
}

} // namespace

void logEvent(EventLog& log, std::wstring_view event, const std::wstring& fields)
{
    logEvents(log, {{event, fields}});
}

void logEvents(EventLog& log, const std::vector<LoggedEvent>& events)
{
    if (events.empty())
        return;
    const std::lock_guard lock(log.mutex);
    const Moment moment = now();
    std::string lines;
    for (const auto& [event, fields] : events) {
        const std::string line = peer::toUtf8(eventLine(moment, event, fields));
        log.newRows.push_back(makeRow(moment, event, fields, line));
        lines += line;
    }
    peer::appendToFile(log.path, lines);
    if (log.window != nullptr)
        PostMessageW(log.window, log.message, 0, 0);
}

void showEventsIn(EventLog& log, HWND window, UINT message)
{
    const std::lock_guard lock(log.mutex);
    log.window = window;
    log.message = message;
    if (window != nullptr && !log.newRows.empty())
        PostMessageW(window, message, 0, 0);
}

std::vector<EventRow> takeNewRows(EventLog& log)
{
    const std::lock_guard lock(log.mutex);
    return std::exchange(log.newRows, {});
}

} // namespace companion
