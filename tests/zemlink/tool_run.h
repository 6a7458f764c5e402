// One run of zemlink, with its output.
#pragma once

#include "peer/handle.h"
#include "support/bytes.h"
#include "support/installation.h"
#include "support/processes.h"

#include <optional>
#include <string>
#include <windows.h>

namespace testing_support {

class ToolRun {
public:
    // Starts it with these arguments. Its output is stored in the installation folder under the
    // name. The default program is next to the test program.
    ToolRun(const Installation& installation, const std::wstring& arguments,
            const std::wstring& name = L"zemlink",
            const std::wstring& program = programFolder() + L"zemlink.exe")
        : outputPath_(installation.path(name + L".out")),
          errorPath_(installation.path(name + L".err")),
          process_(quoted(program) + L' ' + arguments, false, openForChild(outputPath_).get(),
                   openForChild(errorPath_).get())
    {
    }

    // The exit code; empty when it is still running after the time limit.
    std::optional<DWORD> waitForExit() const { return process_.waitForExit(); }
    // The output so far, with LF as line end.
    std::string output() const { return readBytes(outputPath_).value_or(""); }
    std::string errors() const { return readBytes(errorPath_).value_or(""); }
    // True once the output contains the text.
    bool waitForOutput(const std::string& text) const
    {
        return waitUntil([&] { return output().find(text) != std::string::npos; });
    }

private:
    static peer::OwnHandle openForChild(const std::wstring& path)
    {
        SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
        return peer::ownFile(CreateFileW(
            path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
            &inherited, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    }

    const std::wstring outputPath_, errorPath_;
    const Process process_;
};

struct ToolResult {
    DWORD exitCode;
    std::string output;
    std::string errors;
};

// Waits for zemlink to exit. If it does not exit in time, the exit code is STILL_ACTIVE.
inline ToolResult runTool(const Installation& installation, const std::wstring& arguments)
{
    const ToolRun run(installation, arguments);
    return {run.waitForExit().value_or(STILL_ACTIVE), run.output(), run.errors()};
}

} // namespace testing_support
