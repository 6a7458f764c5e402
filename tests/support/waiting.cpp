#include "support/waiting.h"

#include <windows.h>

namespace testing_support {

void pumpMessages()
{
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

bool waitUntil(const std::function<bool()>& condition, unsigned milliseconds)
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

} // namespace testing_support
