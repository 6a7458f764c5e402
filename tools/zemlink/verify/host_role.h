// Takes the place of a host: its window and its command file.
#pragma once

#include "peer/handle.h"
#include "tools/zemlink/verify/waiting.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace zemlink {

// The process id of the host is that of this process. For one thread, whose window messages must be
// handled.
class HostRole {
public:
    // Shows the window and makes the command file, in the installation folder. Throws
    // std::runtime_error.
    HostRole(const std::wstring& folder, const Waiting& waiting);
    ~HostRole();
    HostRole(const HostRole&) = delete;
    HostRole& operator=(const HostRole&) = delete;

    HWND window() const { return window_; }

    // Makes the file again, empty, and keeps it open as hosts do. False when that is not possible
    // in time because another program has it open.
    bool makeFile();
    // Makes it again and does not keep it open, as no host does.
    bool makeClosedFile();
    void removeFile();
    bool isFileHeld() const { return file_ != nullptr; }
    bool hasFile() const;

    std::string content() const;
    // What a request is that the host has not taken yet.
    void putContent(std::string_view bytes);

private:
    bool makeFile(DWORD flags, bool isKept);

    std::wstring path_;
    const Waiting& waiting_;
    HWND window_;
    peer::OwnHandle file_;
};

} // namespace zemlink
