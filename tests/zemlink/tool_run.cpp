#include "zemlink/tool_run.h"

#include "support/bytes.h"
#include "support/processes.h"
#include "support/waiting.h"

#include <cstdio>
#include <cstdlib>

namespace testing_support {

namespace {

[[noreturn]] void giveUp(const std::wstring& what)
{
    std::fprintf(stderr, "%ls: error %lu\n", what.c_str(), GetLastError());
    std::exit(99);
}

HANDLE openForChild(const std::wstring& path)
{
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                    &inherited, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        giveUp(L"cannot make " + path);
    return file;
}

} // namespace

ToolRun::ToolRun(const Installation& installation, const std::wstring& words,
                 const std::wstring& name, const std::wstring& program)
    : outputPath_(installation.path(name + L".out")), errorPath_(installation.path(name + L".err"))
{
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdOutput = openForChild(outputPath_);
    start.hStdError = openForChild(errorPath_);
    std::wstring commandLine = quoted(program) + L' ' + words;
    const bool isStarted = CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, TRUE, 0,
                                          nullptr, nullptr, &start, &information_) != FALSE;
    if (!isStarted)
        giveUp(L"cannot start " + commandLine);
    CloseHandle(start.hStdOutput);
    CloseHandle(start.hStdError);
}

ToolRun::~ToolRun()
{
    TerminateProcess(information_.hProcess, 98);
    WaitForSingleObject(information_.hProcess, generousMs);
    CloseHandle(information_.hThread);
    CloseHandle(information_.hProcess);
}

std::optional<DWORD> ToolRun::waitForExit() const
{
    const auto hasEnded = [this] {
        return WaitForSingleObject(information_.hProcess, 0) == WAIT_OBJECT_0;
    };
    DWORD code = 0;
    if (!waitUntil(hasEnded) || !GetExitCodeProcess(information_.hProcess, &code))
        return std::nullopt;
    return code;
}

std::string ToolRun::output() const
{
    return readBytes(outputPath_).value_or("");
}

std::string ToolRun::errors() const
{
    return readBytes(errorPath_).value_or("");
}

bool ToolRun::waitForOutput(const std::string& text) const
{
    return waitUntil([&] { return output().find(text) != std::string::npos; });
}

ToolResult runTool(const Installation& installation, const std::wstring& words)
{
    const ToolRun run(installation, words);
    const auto code = run.waitForExit();
    if (!code)
        giveUp(L"zemlink does not end: " + words);
    return {*code, run.output(), run.errors()};
}

} // namespace testing_support
