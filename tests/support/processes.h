// Processes that a test starts.
#pragma once

#include <optional>
#include <string>
#include <windows.h>

namespace testing_support {

// A started process. One that still runs when this goes out of scope is ended.
class Process {
public:
    // Starts the command line without a console and without standard input; ends the test program
    // with a message when that fails. One that starts suspended does nothing until it is resumed.
    explicit Process(std::wstring commandLine, bool isSuspended = false);
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    DWORD id() const { return information_.dwProcessId; }
    bool isRunning() const;
    void resume() const;
    // The exit code; nothing when the process still runs after so long. Runs the message loop.
    std::optional<DWORD> waitForExit() const;
    void end();

private:
    PROCESS_INFORMATION information_{};
};

// The argument in double quotes.
std::wstring quoted(const std::wstring& argument);

} // namespace testing_support
