// One run of zemlink, with its output.
#pragma once

#include "support/installation.h"
#include "support/bytes.h"

#include <optional>
#include <string>
#include <windows.h>

namespace testing_support {

// The destructor ends the process if it is still running.
class ToolRun {
public:
    // Starts it with these arguments. Its output is stored in the installation folder under the
    // name. The default program is next to the test program.
    ToolRun(const Installation& installation, const std::wstring& words,
            const std::wstring& name = L"zemlink",
            const std::wstring& program = programFolder() + L"zemlink.exe");
    ~ToolRun();
    ToolRun(const ToolRun&) = delete;
    ToolRun& operator=(const ToolRun&) = delete;

    // The exit code; empty when it is still running after the time limit.
    std::optional<DWORD> waitForExit() const;
    // The output so far, with LF as line end.
    std::string output() const;
    std::string errors() const;
    // True once the output contains the text.
    bool waitForOutput(const std::string& text) const;

private:
    const std::wstring outputPath_, errorPath_;
    PROCESS_INFORMATION information_{};
};

struct ToolResult {
    DWORD exitCode;
    std::string output;
    std::string errors;
};

// Runs it to its end; ends the test program with a message if it does not end.
ToolResult runTool(const Installation& installation, const std::wstring& words);

} // namespace testing_support
