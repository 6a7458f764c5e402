// Installs and starts the stand-in Companion.
#pragma once

#include "support/bytes.h"
#include "support/file_tail.h"
#include "support/installation.h"
#include "support/processes.h"
#include "support/windows.h"

#include <filesystem>
#include <string>

namespace testing_support {

// Exit codes of a Companion that hands its arguments to the running instance.
inline constexpr DWORD carriedOut = 0;
inline constexpr DWORD notCarriedOut = 1;

// Copies the program and the library it ships with into the installation folder.
inline void installCompanionWithLibrary(const Installation& installation)
{
    installation.installCompanion(programFolder() + L"TORVA-ZEM.exe");
    std::filesystem::copy(programFolder() + L"shipped\\companion\\parts",
                          installation.path(L"library"), std::filesystem::copy_options::recursive);
}

inline std::wstring companionCommand(const Installation& installation, const std::wstring& args)
{
    return quoted(installation.path(L"TORVA-ZEM.exe")) + (args.empty() ? L"" : L" ") + args;
}

// Starts the installed program with these arguments and returns its exit code.
inline DWORD startCompanion(const Installation& installation, const std::wstring& args)
{
    return Process(companionCommand(installation, args)).waitForExit().value_or(STILL_ACTIVE);
}

// The running instance; the destructor ends it.
class CompanionProgram {
public:
    // Starts it with these arguments, or creates it suspended. It must already be installed.
    explicit CompanionProgram(const Installation& installation, const std::wstring& args = L"",
                              bool isSuspended = false)
        : installation_(installation), process_(companionCommand(installation, args), isSuspended)
    {
    }

    const Process& process() const { return process_; }

    // The event log, each line without date and time.
    Lines log() const
    {
        constexpr size_t dateTimeAndSpace = 24;
        Lines lines =
            linesOf(fromUtf8(readBytes(installation_.path(L"sys\\companion.log")).value_or("")));
        for (std::wstring& line : lines)
            line.erase(0, dateTimeAndSpace);
        return lines;
    }

    // The number of log lines that contain the text.
    size_t count(const std::wstring& text) const { return testing_support::count(log(), text); }

    // Waits until this many log lines contain the text; false once no further one has come for the
    // timeout.
    bool waitForLog(const std::wstring& text, size_t times = 1) const
    {
        return waitForLines(installation_.path(L"sys\\companion.log"), text, times);
    }

    // The last log line that contains the text; empty if there is none.
    std::wstring lastLine(const std::wstring& text) const
    {
        std::wstring found;
        for (const std::wstring& line : log())
            if (line.find(text) != line.npos)
                found = line;
        return found;
    }

    // Waits for the main window, found by its instance property; null on timeout.
    HWND waitForWindow() const
    {
        HWND window = nullptr;
        waitUntil([&] {
            window = windowWithProperty(process_.id(),
                                        L"https://torva.example/namespace/torvapdm/instance");
            return window || !process_.isRunning();
        });
        return window;
    }

    // Waits until the running instance has its window, starts the program a second time with these
    // arguments and returns that process's exit code.
    DWORD run(const std::wstring& args) const
    {
        waitForWindow();
        return startCompanion(installation_, args);
    }

private:
    const Installation& installation_;
    Process process_;
};

} // namespace testing_support
