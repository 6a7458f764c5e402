// Installs and starts the stand-in Companion.
#pragma once

#include "support/bytes.h"
#include "support/installation.h"
#include "support/processes.h"
#include "support/waiting.h"

#include <string>

namespace testing_support {

// Exit codes of a Companion that hands its arguments to the running instance.
inline constexpr DWORD carriedOut = 0;
inline constexpr DWORD notCarriedOut = 1;

// Copies the program and the library it ships with into the installation folder.
void installCompanionWithLibrary(const Installation& installation);

// The running instance; the destructor ends it.
class CompanionProgram {
public:
    // Starts it with these arguments, or creates it suspended. It must already be installed.
    explicit CompanionProgram(const Installation& installation, const std::wstring& words = L"",
                              bool isSuspended = false);

    const Process& process() const { return process_; }

    // The event log, each line without date and time.
    Lines log() const;
    // The number of log lines that contain the text.
    size_t count(const std::wstring& text) const;
    // Waits until this many log lines contain the text; false on timeout.
    bool waitForLog(const std::wstring& text, size_t times = 1) const;
    // The last log line that contains the text; empty if there is none.
    std::wstring lastLine(const std::wstring& text) const;

    // Waits for the main window, found by its instance property; null on timeout.
    HWND waitForWindow() const;

    // Waits until the running instance has its window, starts the program a second time with these
    // arguments and returns that process's exit code.
    DWORD tell(const std::wstring& words) const;

private:
    const Installation& installation_;
    Process process_;
};

// Starts the installed program with these arguments and returns its exit code.
DWORD startCompanion(const Installation& installation, const std::wstring& words);

} // namespace testing_support
