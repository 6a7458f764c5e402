#include "application/main_window.h"

#include "application/commands.h"
#include "application/main_menu.h"
#include "application/message_loop.h"
#include "application/own_module.h"
#include "view/view.h"
#include "core/session.h"

namespace standin {

namespace {

constexpr wchar_t className[] = L"Mastercam main window";
constexpr wchar_t firstTitle[] = L"Mastercam - Mill";
constexpr int firstWidth = 1180;
constexpr int firstHeight = 740;

void scroll(HWND window, WPARAM wheel)
{
    scrollOperations(-GET_WHEEL_DELTA_WPARAM(wheel) / WHEEL_DELTA);
    InvalidateRect(window, nullptr, FALSE);
}

LRESULT CALLBACK mainWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_COMMAND:
        runCommand(LOWORD(wParam));
        return 0;
    case newDocumentMessage:
        runNewCommand();
        return 0;
    case WM_INITMENUPOPUP:
        checkMenuRows(GetMenu(window));
        return 0;
    case WM_MOUSEWHEEL:
        scroll(window, wParam);
        return 0;
    case WM_ERASEBKGND:
        return 1; // the view covers everything
    case WM_SIZE:
        InvalidateRect(window, nullptr, FALSE);
        return 0;
    case WM_PAINT:
        paintView(window);
        return 0;
    case WM_CLOSE:
        // The add-in is to be closed before its host's window is.
        requestQuit();
        return 0;
    default:
        return DefWindowProcW(window, message, wParam, lParam);
    }
}

void registerClass()
{
    WNDCLASSEXW definition{};
    definition.cbSize = sizeof definition;
    definition.lpfnWndProc = mainWindowProc;
    definition.hInstance = ownModule();
    definition.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    definition.hIcon = LoadIconW(nullptr, IDI_APPLICATION);
    definition.lpszClassName = className;
    RegisterClassExW(&definition); // fails when it is there from an earlier start: the same class
}

} // namespace

HWND createMainWindow(bool visible)
{
    registerClass();
    const HWND window =
        CreateWindowExW(0, className, firstTitle, WS_OVERLAPPEDWINDOW, 40, 40, firstWidth,
                        firstHeight, nullptr, createMainMenu(), ownModule(), nullptr);
    if (window && visible) {
        ShowWindow(window, SW_SHOWNORMAL);
        UpdateWindow(window);
    }
    return window;
}

std::wstring titleOf(HWND window)
{
    std::wstring title(static_cast<size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    const int length = GetWindowTextW(window, title.data(), static_cast<int>(title.size()));
    title.resize(static_cast<size_t>(length));
    return title;
}

void showNameInTitle(const std::wstring& name)
{
    const std::wstring title = titleOf(mainWindow());
    const std::wstring program = title.substr(0, title.rfind(L"  "));
    const std::wstring shown = name.empty() ? program : program + L"  " + name;
    SetWindowTextW(mainWindow(), shown.c_str());
}

} // namespace standin
