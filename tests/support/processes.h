// Starts and ends processes.
#pragma once

#include "support/waiting.h"

#include <cstdio>
#include <cstdlib>
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
                     HANDLE errors = nullptr)
    {
        STARTUPINFOW start{};
        start.cb = sizeof start;
        start.dwFlags = output ? STARTF_USESTDHANDLES : 0;
        start.hStdOutput = output;
        start.hStdError = errors;
        // Starting can fail briefly while another process of the same program is ending.
        const auto started = [&] {
            return CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, output != nullptr,
                                  isSuspended ? CREATE_SUSPENDED : 0, nullptr, nullptr, &start,
                                  &information_) != FALSE;
        };
        if (!waitUntil(started, 5000)) {
            std::fprintf(stderr, "cannot start %ls: error %lu\n", commandLine.c_str(),
                         GetLastError());
            std::exit(99);
        }
    }
    ~Process()
    {
        end();
        CloseHandle(information_.hThread);
        CloseHandle(information_.hProcess);
    }
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    DWORD id() const { return information_.dwProcessId; }
    bool isRunning() const { return WaitForSingleObject(information_.hProcess, 0) == WAIT_TIMEOUT; }
    void resume() const { ResumeThread(information_.hThread); }
    // The exit code; nothing if the process is still running after the timeout. Runs the message
    // loop.
    std::optional<DWORD> waitForExit() const
    {
        DWORD code = 0;
        const bool hasEnded = waitUntil([this] { return !isRunning(); }) &&
                              GetExitCodeProcess(information_.hProcess, &code);
        return hasEnded ? std::optional(code) : std::nullopt;
    }
    void end()
    {
        if (!isRunning())
            return;
        TerminateProcess(information_.hProcess, 98);
        WaitForSingleObject(information_.hProcess, generousMs);
    }

private:
    PROCESS_INFORMATION information_{};
};

// Puts the argument in double quotes.
inline std::wstring quoted(const std::wstring& argument)
{
    return L'"' + argument + L'"';
}

} // namespace testing_support
