// Writes events to `sys\companion.log`, in the format in event_text.h, and keeps them for the
// window. All functions may be called on any thread.
#pragma once

#include <mutex>
#include <string>
#include <string_view>
#include <vector>
#include <windows.h>

namespace companion {

struct EventRow {
    std::wstring time;
    std::wstring title;
    std::wstring details;
    std::wstring status; // for the status line; empty: no change
};

struct EventLog {
    std::wstring path;
    std::mutex mutex;              // guards the members below, and keeps the lines in order of time
    std::vector<EventRow> newRows; // not yet shown
    HWND window = nullptr;         // gets `message` posted when there are new rows
    UINT message = 0;
};

// When this returns, the line is in the file. If the file cannot be written, the event is still
// shown in the window.
void logEvent(EventLog& log, std::wstring_view event, const std::wstring& fields = {});

struct LoggedEvent {
    std::wstring_view event;
    std::wstring fields{};
};

// The same for several events at the same time, with one write.
void logEvents(EventLog& log, const std::vector<LoggedEvent>& events);

// Sets the window that is notified of new rows; null for none. It is notified immediately if there
// are some.
void showEventsIn(EventLog& log, HWND window, UINT message);

// The rows since the last call.
std::vector<EventRow> takeNewRows(EventLog& log);

} // namespace companion
