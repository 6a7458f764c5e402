#include "support/dialogs.h"

namespace testing_support {

namespace {

bool isDialog(HWND window)
{
    wchar_t name[16];
    return GetClassNameW(window, name, 16) && lstrcmpW(name, L"#32770") == 0;
}

LRESULT CALLBACK closeActivatedDialog(int code, WPARAM wParam, LPARAM lParam)
{
    const HWND window = reinterpret_cast<HWND>(wParam);
    if (code == HCBT_ACTIVATE && isDialog(window))
        PostMessageW(window, WM_COMMAND, IDOK, 0);
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

} // namespace

SystemDialogs::SystemDialogs()
    : hook_(SetWindowsHookExW(WH_CBT, closeActivatedDialog, nullptr, GetCurrentThreadId()))
{
}

SystemDialogs::~SystemDialogs()
{
    UnhookWindowsHookEx(hook_);
}

} // namespace testing_support
