#include "application/help_window.h"

#include "application/main_window.h"
#include "control.h"

#include <algorithm>

namespace standin {

namespace {

constexpr wchar_t helpClassName[] = L"Mastercam help window";
constexpr int margin = 10;

std::wstring& theText()
{
    static std::wstring text;
    return text;
}

// Edit controls end a line with CR LF.
std::wstring editText(const std::wstring& text)
{
    std::wstring lines;
    for (const wchar_t c : text)
        lines.append(c == L'\n' ? L"\r\n" : std::wstring(1, c));
    return lines;
}

HFONT fixedFont()
{
    static const HFONT font = CreateFontW(-13, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE,
                                          DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS,
                                          CLEARTYPE_QUALITY, FIXED_PITCH | FF_MODERN, L"Consolas");
    return font;
}

void createText(HWND window)
{
    const HWND text = CreateWindowExW(0, L"EDIT", editText(theText()).c_str(),
                                      WS_CHILD | WS_VISIBLE | WS_VSCROLL | ES_MULTILINE |
                                          ES_READONLY | ES_AUTOVSCROLL,
                                      0, 0, 0, 0, window, nullptr, ownModule(), nullptr);
    SendMessageW(text, WM_SETFONT, reinterpret_cast<WPARAM>(fixedFont()), FALSE);
}

void placeText(HWND window, int width, int height)
{
    MoveWindow(GetWindow(window, GW_CHILD), margin, margin, std::max(width - margin, 0),
               std::max(height - margin, 0), TRUE);
}

LRESULT CALLBACK helpWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_CREATE:
        createText(window);
        return 0;
    case WM_SIZE:
        placeText(window, LOWORD(lParam), HIWORD(lParam));
        return 0;
    case WM_CTLCOLORSTATIC: // a read-only edit control
        return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_WINDOW));
    default:
        return DefWindowProcW(window, message, wParam, lParam);
    }
}

void registerHelpClass()
{
    WNDCLASSEXW definition{};
    definition.cbSize = sizeof definition;
    definition.lpfnWndProc = helpWindowProc;
    definition.hInstance = ownModule();
    definition.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    definition.hbrBackground = GetSysColorBrush(COLOR_WINDOW);
    definition.lpszClassName = helpClassName;
    RegisterClassExW(&definition); // fails if it is registered, which is fine
}

} // namespace

void setScriptHelp(const std::wstring& text)
{
    theText() = text;
}

void showHelpWindow(HWND owner)
{
    registerHelpClass();
    static HWND window = nullptr;
    if (!IsWindow(window)) {
        RECT area{};
        GetWindowRect(owner, &area);
        constexpr int width = 780, height = 520;
        window = CreateWindowExW(0, helpClassName, L"Script commands", WS_OVERLAPPEDWINDOW,
                                 std::max(area.right - width - 20, 0L), area.top + 60, width,
                                 height, owner, nullptr, ownModule(), nullptr);
    }
    ShowWindow(window, SW_SHOWNORMAL);
    SetForegroundWindow(window);
}

} // namespace standin
