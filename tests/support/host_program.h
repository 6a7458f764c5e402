// Starts the stand-in host with the shipped add-in for one test.
#pragma once

#include "support/bytes.h"
#include "support/file_tail.h"
#include "support/installation.h"
#include "support/processes.h"
#include "support/windows.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace testing_support {

class HostProgram {
public:
    // Starts the host with this script (lines with line ends). It writes its trace to a file with
    // this name in the installation folder. The library is the shipped one, or another.
    explicit HostProgram(const Installation& installation, const std::string& script,
                         const std::wstring& name = L"host",
                         const std::wstring& program = programFolder() + L"Mastercam.exe",
                         const std::wstring& library = programFolder() + L"torvapdm.dll")
        : installation_(installation),
          tracePath_(installation.path(name + L".trace")),
          scriptPath_(installation.path(name + L".script")),
          process_((writeBytes(scriptPath_, script),
                    quoted(program) + L" --addin " + quoted(library) + L" --script " +
                        quoted(scriptPath_) + L" --trace " + quoted(tracePath_)))
    {
    }

    const Process& process() const { return process_; }
    std::wstring commandFile() const { return installation_.commandFile(process_.id()); }

    Lines trace() const { return linesOf(fromUtf8(readBytes(tracePath_).value_or(""))); }
    // Waits until this many lines of the trace contain the text; false once no further one has come
    // for the timeout.
    bool waitForTrace(const std::wstring& text, size_t times = 1) const
    {
        return waitForLines(tracePath_, text, times);
    }
    // Waits until the command file exists, that is, until the add-in is open; false on timeout.
    bool waitForCommandFile() const
    {
        return waitUntil([&] { return readBytes(commandFile()).has_value(); });
    }
    // The top-level window with the host-instance property, or null.
    HWND window() const
    {
        return windowWithProperty(process_.id(),
                                  L"https://torva.example/namespace/torvapdm/mastercam-instance");
    }

    // Sends this command id of the host's menu, once the add-in is open.
    void command(unsigned number) const
    {
        const bool isPosted = waitUntil([&] {
            const HWND main = window();
            return main && PostMessageW(main, WM_COMMAND, number, 0);
        });
        if (!isPosted) {
            std::fprintf(stderr, "command %u cannot be posted to the host\n", number);
            std::exit(99);
        }
    }
    // Sends the add-in an event with a command of the host's menu and waits for its trace line. All
    // messages posted to the host's UI thread before have been processed by then. False on timeout.
    bool sendEvent(unsigned code) const
    {
        constexpr unsigned firstEventCommand = 43000; // of the Events menu, plus the event's code
        const std::wstring line = L"ui m_notify(" + std::to_wstring(code) + L") ";
        const size_t before = count(trace(), line);
        command(firstEventCommand + code);
        return waitUntil([&] { return count(trace(), line) > before; });
    }

private:
    const Installation& installation_;
    const std::wstring tracePath_, scriptPath_;
    Process process_;
};

// The trace lines written by the listener thread.
inline Lines fromOtherThreads(const Lines& lines)
{
    return linesThatStart(lines, L"other ");
}

} // namespace testing_support
