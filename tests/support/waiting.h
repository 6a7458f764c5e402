// Waiting with long timeouts: a test polls for what it expects and never sleeps for a fixed time.
#pragma once

#include <cstdlib>
#include <functional>
#include <windows.h>

namespace testing_support {

// Long enough for a slow computer; a test that reaches this timeout has failed. Where failure is
// expected, the environment variable TEST_WAIT_MS makes it shorter.
inline const unsigned generousMs = [] {
    const char* const wait = std::getenv("TEST_WAIT_MS");
    return wait ? static_cast<unsigned>(std::strtoul(wait, nullptr, 10)) : 180000;
}();

// Runs the thread's message loop until it is empty.
inline void pumpMessages()
{
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

// Runs the thread's message loop until the condition holds; false on timeout.
inline bool waitUntil(const std::function<bool()>& condition, unsigned milliseconds = generousMs)
{
    const ULONGLONG end = GetTickCount64() + milliseconds;
    for (;;) {
        pumpMessages();
        if (condition())
            return true;
        if (GetTickCount64() > end)
            return false;
        Sleep(2);
    }
}

// Waits until the count is reached; false once it has not grown for the timeout.
inline bool waitForCount(size_t expected, const std::function<size_t()>& count)
{
    for (size_t reached = 0; reached < expected;) {
        const size_t before = reached;
        if (!waitUntil([&] { return (reached = count()) > before; }))
            return false;
    }
    return true;
}

} // namespace testing_support
