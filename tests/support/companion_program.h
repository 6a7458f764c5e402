// The stand-in Companion's program with its library, put into an installation folder and started.
#pragma once

#include "support/bytes.h"
#include "support/installation.h"
#include "support/processes.h"
#include "support/waiting.h"

#include <string>

namespace testing_support {

// Copies the program and the library that it ships with into the installation folder.
void installCompanionWithLibrary(const Installation& installation);

// The one running instance, ended with its object.
class CompanionProgram {
public:
    // Starts it with these words, or only makes its process. It is installed already.
    explicit CompanionProgram(const Installation& installation, const std::wstring& words = L"",
                              bool isSuspended = false);

    const Process& process() const { return process_; }

    // The event log, each line without its date and time.
    Lines log() const;
    // How many lines of the log contain the text.
    size_t count(const std::wstring& text) const;
    // True once so many lines of the log contain the text.
    bool waitForLog(const std::wstring& text, size_t times = 1) const;
    // The last line of the log that contains the text, or an empty one.
    std::wstring lastLine(const std::wstring& text) const;

    // The main window that carries the instance property, once it is there; null without one.
    HWND waitForWindow() const;

    // Starts the program a second time with these words and gives its exit code; waits until the
    // running instance has its window.
    DWORD tell(const std::wstring& words) const;

private:
    const Installation& installation_;
    Process process_;
};

// Starts the installed program with these words and gives its exit code.
DWORD startCompanion(const Installation& installation, const std::wstring& words);

} // namespace testing_support
