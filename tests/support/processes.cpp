#include "support/processes.h"

#include "support/waiting.h"

#include <cstdio>
#include <cstdlib>

namespace testing_support {

Process::Process(std::wstring commandLine, bool isSuspended, HANDLE output, HANDLE errors)
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
        std::fprintf(stderr, "cannot start %ls: error %lu\n", commandLine.c_str(), GetLastError());
        std::exit(99);
    }
}

Process::~Process()
{
    end();
    CloseHandle(information_.hThread);
    CloseHandle(information_.hProcess);
}

std::optional<DWORD> Process::waitForExit() const
{
    if (!waitUntil([this] { return !isRunning(); }))
        return std::nullopt;
    DWORD code = 0;
    GetExitCodeProcess(information_.hProcess, &code);
    return code;
}

void Process::end()
{
    if (!isRunning())
        return;
    TerminateProcess(information_.hProcess, 98);
    WaitForSingleObject(information_.hProcess, generousMs);
}

} // namespace testing_support
