// The stand-in host's controls: how its program and the tests start it, steer it and read what it
// did. The add-in knows nothing of this header.
#pragma once

#include "host/import.h"

#include <optional>
#include <string>
#include <vector>
#include <windows.h>

namespace standin {

struct HostOptions {
    std::wstring tracePath;           // empty: the trace is kept in memory only
    bool answersMessageBoxes = false; // close the add-in's message boxes with OK
    bool visible = true;              // show the main window
};

// Opens the host's main window on the calling thread, which becomes the user-interface thread, and
// switches the host operations from "no host program" to working. False when the window cannot be
// created. One host a process.
MASTERCAM_API bool startHost(const HostOptions& options);

// Destroys the main window; the host operations answer null and false again.
MASTERCAM_API void stopHost();

// Observes the message boxes and popup menus that this module shows: they are traced, answered
// while `answersMessageBoxes` is on, and steered by `chooseNext`. Call it once for the add-in.
MASTERCAM_API void observeModule(HMODULE module);

// Turns the answering of message boxes on or off while the host runs.
MASTERCAM_API void answerMessageBoxes(bool on);

// Host state, by the names of the script command `set`. False for an unknown name or value.
MASTERCAM_API bool setState(const std::string& name, const std::wstring& value);
// The present value, true and false for flags. Empty for an unknown name.
MASTERCAM_API std::wstring state(const std::string& name);
// The same, and nothing for an unknown name.
MASTERCAM_API std::optional<std::wstring> knownState(const std::string& name);

// Puts this part file into the host; false when it cannot be read, and then nothing has changed.
MASTERCAM_API bool putPart(const std::wstring& path);

// The next `count` calls of the operation report failure, or raise the framework's exception.
// False for a name that is no host operation.
MCCORE_API bool failNext(const std::string& operation, int count = 1);
MCCORE_API bool raiseNext(const std::string& operation, int count = 1);
// The `nth` call from now on, from 1, raises it, and none before; 0 takes that back. False as
// above.
MCCORE_API bool raiseAt(const std::string& operation, int nth);

// How often the operation was called since the program began; 0 for a name that is none.
MCCORE_API int callsOf(const std::string& operation);
// The names of all host operations.
MCCORE_API std::vector<std::string> operations();

// What happens to the next popup menu, and what the host's own save command does next.
MASTERCAM_API void chooseNext(const std::wstring& item);
MASTERCAM_API void saveDialogNext(const std::wstring& path);

// Where the host sends its add-in's events (save command, Events menu); null for nowhere. Each is
// traced as a call of `m_notify`.
MASTERCAM_API void setEventSink(int (*notify)(int code));

// Loads the add-in, observes it and sends it the host's events; false when it cannot be loaded.
MASTERCAM_API bool loadAddIn(const std::wstring& path);
// Calls an export of the loaded add-in and traces the call. What the export lets out ends there:
// the line says so. False when there is no such export.
MASTERCAM_API bool callExport(const std::string& name, std::optional<int> argument = std::nullopt);

// The trace so far, a line each, without line ends.
MCCORE_API std::vector<std::wstring> traceLines();
// Appends a line for the current thread: `ui ` or `other ` is put before it.
MCCORE_API void trace(const std::wstring& line);

// Runs the message loop for so long; false when the program was asked to quit.
MASTERCAM_API bool pumpFor(unsigned milliseconds);
// Runs the message loop until a line that contains `text` is traced, among those since the last
// match. False after `milliseconds`, or when the program was asked to quit.
MASTERCAM_API bool waitForTrace(const std::wstring& text, unsigned milliseconds = 10000);

// Runs the message loop until the program is asked to quit.
MASTERCAM_API void runMessageLoop();
// True once the main window was closed, the program's exit chosen or an empty path told to the save
// command.
MASTERCAM_API bool isQuitting();

// Shows a note to the user at the lower edge of the main window.
MASTERCAM_API void showNote(const std::wstring& text);

// Exceptions the host raised that nobody has deleted yet.
MCCORE_API int undeletedExceptions();

} // namespace standin
