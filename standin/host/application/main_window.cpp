#include "application/main_window.h"

#include "application/commands.h"
#include "application/main_menu.h"
#include "application/message_loop.h"
#include "control.h"
#include "core/document.h"
#include "core/session.h"
#include "core/trace.h"
#include "view/view.h"

#include <algorithm>
#include <utility>

namespace standin {

namespace {

constexpr wchar_t className[] = L"Mastercam main window";
constexpr wchar_t firstTitle[] = L"Mastercam - Mill";
// The Companion's window has at least this and at most that width at the left, two fifths of the
// work area in between.
constexpr long leastCompanionWidth = 520;
constexpr long mostCompanionWidth = 760;
constexpr long usualWidth = 1180;
constexpr long usualHeight = 760;

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
        return 1; // the view paints the whole window
    case WM_SIZE:
        InvalidateRect(window, nullptr, FALSE);
        return 0;
    case WM_PAINT:
        paintView(window);
        return 0;
    case WM_CLOSE:
        // The add-in must be closed before the main window is destroyed.
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
    RegisterClassExW(&definition); // fails if an earlier start registered it, which is fine
}

// Null if there is no display.
HWND createMainWindow(bool visible)
{
    registerClass();
    RECT workArea{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &workArea, 0);
    const RECT place = placeMainWindow(workArea);
    const HWND window =
        CreateWindowExW(0, className, firstTitle, WS_OVERLAPPEDWINDOW, place.left, place.top,
                        place.right - place.left, place.bottom - place.top, nullptr,
                        createMainMenu(), ownModule(), nullptr);
    if (window && visible) {
        ShowWindow(window, SW_SHOWNORMAL);
        UpdateWindow(window);
    }
    return window;
}

CFrameWnd& theFrame()
{
    static CFrameWnd frame;
    return frame;
}

} // namespace

HMODULE ownModule()
{
    static const char somethingOfOurs = 0;
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                           GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&somethingOfOurs), &module);
    return module;
}

RECT placeMainWindow(const RECT& workArea)
{
    const long whole = workArea.right - workArea.left;
    const long companion =
        std::clamp(whole * 2 / 5, std::min(leastCompanionWidth, whole / 2), mostCompanionWidth);
    const long left = workArea.left + companion;
    return {left, workArea.top, std::min(left + usualWidth, workArea.right),
            std::min(workArea.top + usualHeight, workArea.bottom)};
}

bool startHost(const HostOptions& options)
{
    if (isRunning() || !openTrace(options.tracePath))
        return false;
    const HWND window = createMainWindow(options.visible);
    if (!window) {
        closeTrace();
        return false;
    }
    resetQuit();
    resetDocument();
    showNote({});
    answerMessageBoxes(options.answersMessageBoxes);
    theFrame().m_hWnd = window;
    beginSession(&theFrame());
    return true;
}

void stopHost()
{
    if (!isRunning())
        return;
    endSession();
    answerMessageBoxes(false);
    DestroyWindow(std::exchange(theFrame().m_hWnd, nullptr));
    closeTrace();
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
