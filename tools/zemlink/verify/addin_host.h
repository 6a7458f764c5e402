// A host that takes scripts, with the add-in, as the Companion sees it.
#pragma once

#include "tools/zemlink/verify/addin_rules.h"
#include "tools/zemlink/verify/addin_site.h"
#include "tools/zemlink/verify/addin_trace.h"
#include "tools/zemlink/verify/program_job.h"
#include "tools/zemlink/verify/waiting.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>
#include <windows.h>

namespace zemlink {

// A top-level window of the host.
struct HostWindow {
    HWND handle = nullptr;
    std::intptr_t property = 0; // the value of the host property
    bool hasMessageClass = false;
    bool isVisible = false;
};

class AddInHost {
public:
    // Starts the host with these commands (lines with line ends); `name` is for its own files.
    // Throws std::runtime_error.
    AddInHost(const AddInToVerify& addIn, const AddInSite& site, const std::wstring& name,
              const std::string& script, const Waiting& waiting);

    DWORD process() const { return GetProcessId(handle_); }
    std::wstring commandFile() const;
    std::vector<HostWindow> windows() const;
    HostTrace trace() const;

    // True once the trace contains the text so many times; false when that has not happened in
    // time or the host has ended.
    bool waitFor(std::string_view text, size_t times = 1) const;
    // Writes the request as soon as the command file is empty.
    bool write(const std::string& request) const;
    // The same, and waits until the add-in has taken it.
    bool send(const std::string& request) const;
    // Writes a part to this path, UTF-8, and sends an open request for it.
    bool open(std::int32_t id, const std::string& path, const std::string& part = "") const;
    // The exit code; empty when it is still running after that time.
    std::optional<DWORD> waitForEnd() const;
    bool hasEnded() const { return zemlink::hasEnded(handle_); }
    void end() { job_.end(); }

    // Why the last wait was in vain, for the end of a sentence.
    std::string whyNot() const;

private:
    bool waitUntil(const std::function<bool()>& condition) const;

    const AddInSite& site_;
    const Waiting& waiting_;
    const std::wstring tracePath_;
    ProgramJob job_{};
    HANDLE handle_ = nullptr;
};

// A line of a script: goes on once the add-in has asked the host to open a file of this name.
std::string untilOpened(const std::wstring& name);

} // namespace zemlink
