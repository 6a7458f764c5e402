// The stand-in host's control interface, used by its program and the tests. The add-in does not use
// it.
#pragma once

#include "host/import.h"

#include <optional>
#include <string>
#include <vector>
#include <windows.h>

namespace standin {

struct HostOptions {
    std::wstring tracePath;           // empty: the trace stays in memory
    bool answersMessageBoxes = false; // close the add-in's message boxes with OK
    bool visible = true;              // show the main window
};

// Opens the host's main window on the calling thread, which becomes the UI thread, and enables the
// host operations. False if the window cannot be created. One host per process.
MASTERCAM_API bool startHost(const HostOptions& options);

// Destroys the main window; the host operations return null and false again.
MASTERCAM_API void stopHost();

// Traces the message boxes and popup menus that this module shows. They are answered while
// `answersMessageBoxes` is on and controlled by `chooseNext`. Call it once for the add-in.
MASTERCAM_API void observeModule(HMODULE module);

// Turns automatic answers to message boxes on or off.
MASTERCAM_API void answerMessageBoxes(bool on);

// Host state, by the names of the script command `set`. False for an unknown name or value.
MASTERCAM_API bool setState(const std::string& name, const std::wstring& value);
// The current value, true or false for flags. Empty for an unknown name.
MASTERCAM_API std::wstring state(const std::string& name);
// The same, but nothing for an unknown name.
MASTERCAM_API std::optional<std::wstring> knownState(const std::string& name);

// The names of all of them, in the order of their table.
MASTERCAM_API std::vector<std::string> stateNames();

// Opens this part file without calling the add-in. False, without any change, if it cannot be read.
MASTERCAM_API bool putPart(const std::wstring& path);

// Makes the next `count` calls of the operation fail, or raise the framework's exception. False for
// an unknown operation.
MCCORE_API bool failNext(const std::string& operation, int count = 1);
MCCORE_API bool raiseNext(const std::string& operation, int count = 1);
// Makes only the `nth` call from now on raise it, counted from 1; 0 cancels that. False for an
// unknown operation.
MCCORE_API bool raiseAt(const std::string& operation, int nth);

// The number of calls of the operation since the process started; 0 for an unknown name.
MCCORE_API int callsOf(const std::string& operation);
// The names of all host operations.
MCCORE_API std::vector<std::string> operations();

// The item to choose in the next popup menu, and the path for the host's next save command.
MASTERCAM_API void chooseNext(const std::wstring& item);
MASTERCAM_API void saveDialogNext(const std::wstring& path);

// The function that receives host events (save command, Events menu), or null. Each call is traced
// as `m_notify`.
MASTERCAM_API void setEventSink(int (*notify)(int code));

// Loads the add-in, observes it and sends it the host's events. False if it cannot be loaded.
MASTERCAM_API bool loadAddIn(const std::wstring& path);
// Calls an export of the loaded add-in and traces the call. An exception ends there and is traced.
// False if there is no such export.
MASTERCAM_API bool callExport(const std::string& name, std::optional<int> argument = std::nullopt);

// The lines of the trace, without line ends.
MCCORE_API std::vector<std::wstring> traceLines();
// Appends a line, prefixed with `ui ` or `other ` for the current thread.
MCCORE_API void trace(const std::wstring& line);

// Runs the message loop for this long. False if the program is quitting.
MASTERCAM_API bool pumpFor(unsigned milliseconds);
// Runs the message loop until a line that contains `text` is traced, counting from the last match.
// False after the timeout or if the program is quitting.
MASTERCAM_API bool waitForTrace(const std::wstring& text, unsigned milliseconds = 10000);

// Runs the message loop until the program quits.
MASTERCAM_API void runMessageLoop();
// True after the main window was closed, Exit was chosen, or the save command ran with an empty
// path.
MASTERCAM_API bool isQuitting();

// Shows a note in the status bar at the lower edge of the main window, in place of the document's
// name. An empty one removes it. Any thread.
MASTERCAM_API void showNote(const std::wstring& text);
MASTERCAM_API std::wstring shownNote();

// Where the main window opens: next to the Companion's, which keeps the left of the work area.
MASTERCAM_API RECT placeMainWindow(const RECT& workArea);

// The text of the window that Help > Script Commands opens.
MASTERCAM_API void setScriptHelp(const std::wstring& text);

// The number of exceptions that the host raised and that are not yet deleted.
MCCORE_API int undeletedExceptions();

} // namespace standin
