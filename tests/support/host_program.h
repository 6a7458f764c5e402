// The stand-in host's program with the add-in that ships, started for one test.
#pragma once

#include "support/bytes.h"
#include "support/installation.h"
#include "support/processes.h"
#include "support/waiting.h"

#include <string>

namespace testing_support {

class HostProgram {
public:
    // Starts the host with this script (lines with line ends), tracing into the installation folder
    // under this name.
    explicit HostProgram(const Installation& installation, const std::string& script,
                         const std::wstring& name = L"host");

    const Process& process() const { return process_; }
    std::wstring commandFile() const { return installation_.commandFile(process_.id()); }

    Lines trace() const;
    // True once a line of the trace contains the text.
    bool waitForTrace(const std::wstring& text) const;
    // True once the command file exists: the add-in is open.
    bool waitForCommandFile() const;
    // The top-level window that carries the host-instance property, or null.
    HWND window() const;

    // Chooses the command of the host's menu with this number, once the add-in is open.
    void command(unsigned number) const;
    // Sends the add-in an event out of the host's menu. True once its line is there: everything
    // that was posted to the host's user-interface thread before has then had its turn.
    bool sendEvent(int code) const;

private:
    static std::wstring commandLine(const Installation& installation, const std::string& script,
                                    const std::wstring& name);

    const Installation& installation_;
    const std::wstring tracePath_;
    Process process_;
};

// The lines that come from the listener's thread.
Lines fromOtherThreads(const Lines& lines);

} // namespace testing_support
