// The bare calls of a request's way: a thread that looks at a file once a period, takes what is in
// it and posts a message, and a window that is posted to.
#pragma once

#include <atomic>
#include <string>
#include <thread>
#include <windows.h>

namespace bench {

constexpr DWORD pollingPeriodMs = 100;

// Polls the file while it lives and notes an arrival when the window gets the message. Belongs to a
// thread with a message loop.
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
