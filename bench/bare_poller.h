// The system calls of a request's path and nothing else: a thread that polls a file, removes its
// content and posts a message, and the window that receives the message.
#pragma once

#include <atomic>
#include <string>
#include <thread>
#include <windows.h>

namespace bench {

constexpr DWORD pollingPeriodMs = 100;

// Polls the file during its lifetime and records an arrival when the window receives the message.
// Must be created on a thread with a message loop.
class BarePoller {
public:
    explicit BarePoller(const std::wstring& path);
    ~BarePoller();
    BarePoller(const BarePoller&) = delete;
    BarePoller& operator=(const BarePoller&) = delete;

private:
    void poll();

    std::wstring path_;
    HANDLE file_;
    HWND window_;
    std::atomic<bool> isStopping_{false};
    std::thread thread_;
};

} // namespace bench
