#include "standin/companion/ui/about.h"

#include "peer/wire_constants.h"
#include "standin/companion/app/resource.h"
#include "standin/companion/ui/look.h"

#include <memory>
#include <string>

namespace companion {
namespace {

constexpr wchar_t aboutClass[] = L"ZemAboutWindow";
constexpr int aboutWidth = 380;
constexpr int aboutHeight = 168;
constexpr int bandHeight = 58;
constexpr DWORD windowStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU;

const Look* lookOf(HWND window)
{
    return reinterpret_cast<const Look*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

void paint(HWND window, const Look& look)
{
    PAINTSTRUCT record{};
    HDC context = BeginPaint(window, &record);
    fillArea(context, {0, 0, aboutWidth, aboutHeight}, backgroundColour);
    fillArea(context, {0, 0, aboutWidth, bandHeight}, headerColour);
    fillArea(context, {0, bandHeight - 3, aboutWidth, 3}, accentColour);
    drawLine(context, {16, 12, aboutWidth - 32, 30}, peer::productName, look.product.get(),
             headerTextColour, DT_LEFT | DT_VCENTER);
    drawLine(context, {16, bandHeight + 14, aboutWidth - 32, 18}, L"Version " COMPANION_VERSION,
             look.title.get(), titleColour, DT_LEFT | DT_VCENTER);
    drawLine(context, {16, bandHeight + 36, aboutWidth - 32, 18},
             L"Keeps part files and exchanges them with Mastercam.", look.text.get(), titleColour,
             DT_LEFT | DT_VCENTER);
    EndPaint(window, &record);
}

void createButton(HWND window, const Look& look)
{
    HWND button =
        CreateWindowExW(0, L"BUTTON", L"OK", WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_DEFPUSHBUTTON,
                        aboutWidth - 96, aboutHeight - 42, 80, 28, window,
                        reinterpret_cast<HMENU>(INT_PTR{IDOK}), GetModuleHandleW(nullptr), nullptr);
    SendMessageW(button, WM_SETFONT, reinterpret_cast<WPARAM>(look.text.get()), TRUE);
    SetFocus(button);
}

LRESULT CALLBACK aboutProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_CREATE: {
        auto look = std::make_unique<Look>(makeLook());
        createButton(window, *look);
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(look.release()));
        return 0; // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks) // the window owns it now
    }
    case WM_PAINT:
        paint(window, *lookOf(window));
        return 0;
    case WM_COMMAND:
        DestroyWindow(window);
        return 0;
    case WM_NCDESTROY:
        delete lookOf(window);
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        return 0;
    default:
        return DefWindowProcW(window, message, wParam, lParam);
    }
}

void registerAboutClass()
{
    WNDCLASSW record{};
    record.lpfnWndProc = aboutProcedure;
    record.hInstance = GetModuleHandleW(nullptr);
    record.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    record.lpszClassName = aboutClass;
    RegisterClassW(&record);
}

// Window handles have 32 significant bits in every process; the upper half is the sign extension.
HWND windowOf(std::uint32_t handle)
{
    return reinterpret_cast<HWND>(static_cast<INT_PTR>(static_cast<std::int32_t>(handle)));
}

POINT placeOver(HWND parent, int width, int height)
{
    RECT area{};
    GetWindowRect(parent, &area);
    return {(area.left + area.right - width) / 2, (area.top + area.bottom - height) / 2};
}

void createAbout(HWND over)
{
    registerAboutClass();
    RECT frame{0, 0, aboutWidth, aboutHeight};
    AdjustWindowRect(&frame, windowStyle, FALSE);
    const int width = frame.right - frame.left;
    const int height = frame.bottom - frame.top;
    const POINT place = placeOver(over, width, height);
    const std::wstring title = std::wstring(L"About ") + peer::productName;
    // No owner: an owner in the host process would attach the input queues of the two programs.
    HWND window =
        CreateWindowExW(WS_EX_TOPMOST, aboutClass, title.c_str(), windowStyle, place.x, place.y,
                        width, height, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    ShowWindow(window, SW_SHOWNORMAL);
    SetForegroundWindow(window);
}

} // namespace

void showAbout(HWND fallback, std::uint32_t parentWindow)
{
    HWND open = FindWindowW(aboutClass, nullptr);
    if (open != nullptr) {
        SetForegroundWindow(open);
        return;
    }
    HWND parent = windowOf(parentWindow);
    createAbout(IsWindow(parent) ? parent : fallback);
}

} // namespace companion
