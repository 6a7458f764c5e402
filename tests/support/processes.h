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
    // It inherits the two handles, where there are any, as its standard output and error.
    explicit Process(std::wstring commandLine, bool isSuspended = false, HANDLE output = nullptr,
                     HANDLE errors = nullptr);
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    DWORD id() const { return information_.dwProcessId; }
    bool isRunning() const { return WaitForSingleObject(information_.hProcess, 0) == WAIT_TIMEOUT; }
    void resume() const { ResumeThread(information_.hThread); }
    // The exit code; nothing when the process still runs after so long. Runs the message loop.
    std::optional<DWORD> waitForExit() const;
    void end();

private:
    PROCESS_INFORMATION information_{};
};

// The argument in double quotes.
inline std::wstring quoted(const std::wstring& argument)
{
    return L'"' + argument + L'"';
}

} // namespace testing_support
