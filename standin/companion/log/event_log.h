// Writes events into `sys\companion.log`, in the form that decisions/eventtext.h describes, and
// keeps them for the window. Every operation may be called on any thread.
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
};

struct EventLog {
    std::wstring path;
    std::mutex mutex;              // guards what follows, and keeps the lines in order of time
    std::vector<EventRow> newRows; // not yet shown
    HWND window = nullptr;         // gets `message` posted when there are new rows
    UINT message = 0;
};

// The line is in the file when this returns. A file that cannot be written is passed over: the
// event still shows in the window.
void logEvent(EventLog& log, std::wstring_view event, const std::wstring& fields = {});

struct LoggedEvent {
    std::wstring_view event;
    std::wstring fields{};
};

// The same for several events of one moment, with one write for all of them.
void logEvents(EventLog& log, const std::vector<LoggedEvent>& events);

// Names the window that is told of new rows; null for none. It is told at once if there are some.
void showEventsIn(EventLog& log, HWND window, UINT message);

// The rows since the last call.
std::vector<EventRow> takeNewRows(EventLog& log);

} // namespace companion
