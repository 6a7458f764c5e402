// Starts the stand-in host with the shipped add-in for one test.
#pragma once

#include "support/bytes.h"
#include "support/installation.h"
#include "support/processes.h"
#include "support/waiting.h"

#include <string>

namespace testing_support {

class HostProgram {
public:
    // Starts the host with this script (lines with line ends). It writes its trace to a file with
    // this name in the installation folder.
    explicit HostProgram(const Installation& installation, const std::string& script,
                         const std::wstring& name = L"host");

    const Process& process() const { return process_; }
    std::wstring commandFile() const { return installation_.commandFile(process_.id()); }

    Lines trace() const;
    // Waits until a line of the trace contains the text; false on timeout.
    bool waitForTrace(const std::wstring& text) const;
    // Waits until the command file exists, that is, until the add-in is open; false on timeout.
    bool waitForCommandFile() const;
    // The top-level window with the host-instance property, or null.
    HWND window() const;

    // Sends this command id of the host's menu, once the add-in is open.
    void command(unsigned number) const;
    // Sends the add-in an event with a command of the host's menu and waits for its trace line. All
    // messages posted to the host's UI thread before have been processed by then. False on timeout.
    bool sendEvent(int code) const;

private:
    static std::wstring commandLine(const Installation& installation, const std::string& script,
                                    const std::wstring& name);

    const Installation& installation_;
    const std::wstring tracePath_;
    Process process_;
};

// The trace lines written by the listener thread.
Lines fromOtherThreads(const Lines& lines);

} // namespace testing_support
