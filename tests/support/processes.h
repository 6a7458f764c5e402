// Starts and ends processes.
#pragma once

#include <optional>
#include <string>
#include <windows.h>

namespace testing_support {

// A started process. The destructor ends it if it is still running.
class Process {
public:
    // Starts the command line without a console and without standard input; exits with a message on
    // failure. A suspended process does nothing until it is resumed. It inherits the two handles,
    // if given, as its standard output and error.
    explicit Process(std::wstring commandLine, bool isSuspended = false, HANDLE output = nullptr,
                     HANDLE errors = nullptr);
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    DWORD id() const { return information_.dwProcessId; }
    bool isRunning() const { return WaitForSingleObject(information_.hProcess, 0) == WAIT_TIMEOUT; }
    void resume() const { ResumeThread(information_.hThread); }
    // The exit code; nothing if the process is still running after the timeout. Runs the message
    // loop.
    std::optional<DWORD> waitForExit() const;
    void end();

private:
    PROCESS_INFORMATION information_{};
};

// Puts the argument in double quotes.
inline std::wstring quoted(const std::wstring& argument)
{
    return L'"' + argument + L'"';
}

} // namespace testing_support
