// One run of zemlink, with what it prints.
#pragma once

#include "support/installation.h"
#include "support/bytes.h"

#include <optional>
#include <string>
#include <windows.h>

namespace testing_support {

// Ended with its object when it still runs.
class ToolRun {
public:
    // Starts it with these words. What it prints is kept in the installation folder under the name.
    // The program is the one beside the test's.
    ToolRun(const Installation& installation, const std::wstring& words,
            const std::wstring& name = L"zemlink",
            const std::wstring& program = programFolder() + L"zemlink.exe");
    ~ToolRun();
    ToolRun(const ToolRun&) = delete;
    ToolRun& operator=(const ToolRun&) = delete;

    // The exit code, once it has ended; nothing when it still runs after so long.
    std::optional<DWORD> waitForExit() const;
    // What it has printed so far, with LF as line end.
    std::string output() const;
    std::string errors() const;
    // True once it has printed the text.
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

// Runs it to its end; ends the test program with a message when that does not come.
ToolResult runTool(const Installation& installation, const std::wstring& words);

} // namespace testing_support
