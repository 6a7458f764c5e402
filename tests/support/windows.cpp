#include "support/windows.h"

#include "support/add_in_state.h"
#include "support/waiting.h"

#include <commctrl.h>
#include <iterator>

namespace testing_support {

namespace {

struct Search {
    DWORD processId;
    const wchar_t* property;
    HWND found;
};

BOOL CALLBACK stopAtProperty(HWND window, LPARAM parameter)
{
    auto* const search = reinterpret_cast<Search*>(parameter);
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    if (owner != search->processId || !GetPropW(window, search->property))
        return TRUE;
    search->found = window;
    return FALSE;
}

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

HWND windowWithProperty(DWORD processId, const wchar_t* property)
{
    Search search = {processId, property, nullptr};
    EnumWindows(stopAtProperty, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

HWND waitForWindowTitled(const std::wstring& title)
{
    waitUntil([&] { return FindWindowW(nullptr, title.c_str()) != nullptr; });
    return FindWindowW(nullptr, title.c_str());
}

std::wstring shownPicture(HWND window)
{
    wchar_t text[256] = L"";
    DWORD_PTR length = 0;
    SendMessageTimeoutW(FindWindowExW(window, nullptr, L"ZemPictureView", nullptr), WM_GETTEXT,
                        std::size(text), reinterpret_cast<LPARAM>(text), SMTO_NORMAL, 1000,
                        &length);
    return text;
}

void selectWith(WPARAM key, HWND window)
{
    PostMessageW(FindWindowExW(window, nullptr, WC_LISTVIEWW, nullptr), WM_KEYDOWN, key, 1);
}

LRESULT rowsOfList(HWND window, int number)
{
    HWND list = nullptr;
    for (int i = 0; i <= number; ++i)
        list = FindWindowExW(window, list, WC_LISTVIEWW, nullptr);
    return SendMessageW(list, LVM_GETITEMCOUNT, 0, 0);
}

SystemDialogs::SystemDialogs()
    : hook_(SetWindowsHookExW(WH_CBT, closeActivatedDialog, nullptr, GetCurrentThreadId()))
{
}

SystemDialogs::~SystemDialogs()
{
    UnhookWindowsHookEx(hook_);
}

// A message-only window: it receives only messages posted to it.
WatchedMessageWindow::WatchedMessageWindow()
    : replaced_(AddInState::messageWindow()),
      window_(CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr,
                              nullptr))
{
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&remember));
    AddInState::setMessageWindow(window_);
}

WatchedMessageWindow::~WatchedMessageWindow()
{
    AddInState::setMessageWindow(replaced_);
    DestroyWindow(window_);
}

const std::vector<UINT>& WatchedMessageWindow::arrived() const
{
    pumpMessages();
    return arrived_;
}

LRESULT CALLBACK WatchedMessageWindow::remember(HWND window, UINT message, WPARAM wParam,
                                                LPARAM lParam)
{
    auto* const self =
        reinterpret_cast<WatchedMessageWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (wParam == 0 && lParam == 0)
        self->arrived_.push_back(message);
    return DefWindowProcW(window, message, wParam, lParam);
}

} // namespace testing_support
