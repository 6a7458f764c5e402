#include "standin/companion/ui/notice_window.h"

#include "standin/companion/app/resource.h"
#include "standin/companion/ui/list_view.h"

#include <algorithm>

namespace companion {
namespace {

constexpr int firstWidth = 720;
constexpr int firstHeight = 520;
constexpr UINT lineFormat = DT_LEFT | DT_VCENTER;

struct Search {
    std::wstring_view windowClass;
    HWND found = nullptr;
};

NoticeWindow* noticeWindowOf(HWND window)
{
    return reinterpret_cast<NoticeWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

RECT clientOf(const NoticeWindow& notice)
{
    RECT client{};
    GetClientRect(notice.window, &client);
    return client;
}

void place(NoticeWindow& notice)
{
    const RECT client = clientOf(notice);
    notice.placeChildren(client.right, client.bottom);
    InvalidateRect(notice.window, nullptr, TRUE);
}

void create(NoticeWindow& notice)
{
    notice.look = makeLook();
    notice.createChildren();
    for (HWND child = GetWindow(notice.window, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT))
        SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(notice.look.text.get()), TRUE);
    place(notice);
}

void paint(const NoticeWindow& notice)
{
    PAINTSTRUCT record{};
    HDC context = BeginPaint(notice.window, &record);
    const RECT client = clientOf(notice);
    const int width = client.right;
    fillArea(context, {0, 0, width, client.bottom}, backgroundColour);
    fillArea(context, {0, 0, width, bandHeight}, headerColour);
    fillArea(context, {0, bandHeight - 3, width, 3}, accentColour);
    drawLine(context, {16, 6, width - 32, 28}, notice.heading, notice.look.product.get(),
             headerTextColour, lineFormat);
    drawLine(context, {16, 33, width - 32, 18}, notice.details, notice.look.text.get(),
             faintHeaderTextColour, lineFormat);
    notice.paintBody(context, width, client.bottom);
    EndPaint(notice.window, &record);
}

LRESULT receiveFromList(NoticeWindow& notice, LPARAM lParam)
{
    const auto& message = *reinterpret_cast<const NMHDR*>(lParam);
    if (message.code == NM_CUSTOMDRAW)
        return drawListRow(*reinterpret_cast<NMLVCUSTOMDRAW*>(lParam));
    if (message.code == LVN_ITEMCHANGED)
        notice.choiceChanged(message.idFrom);
    return 0;
}

LRESULT receive(NoticeWindow& notice, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_CREATE:
        create(notice);
        return 0;
    case WM_SIZE:
        place(notice);
        return 0;
    case WM_PAINT:
        paint(notice);
        return 0;
    case WM_CTLCOLORSTATIC: // sent for a read-only edit control, too
        return reinterpret_cast<LRESULT>(GetStockObject(WHITE_BRUSH));
    case WM_COMMAND:
        // Pressing Escape arrives as IDCANCEL.
        if (LOWORD(wParam) == IDCANCEL)
            DestroyWindow(notice.window);
        return 0;
    case WM_NOTIFY:
        return receiveFromList(notice, lParam);
    default:
        return DefWindowProcW(notice.window, message, wParam, lParam);
    }
}

LRESULT CALLBACK noticeProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_NCCREATE) {
        auto* notice = static_cast<NoticeWindow*>(
            reinterpret_cast<const CREATESTRUCTW*>(lParam)->lpCreateParams);
        notice->window = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(notice));
    }
    NoticeWindow* notice = noticeWindowOf(window);
    if (message == WM_NCDESTROY) {
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        const std::unique_ptr<NoticeWindow> owned(notice);
        return DefWindowProcW(window, message, wParam, lParam);
    }
    if (notice == nullptr)
        return DefWindowProcW(window, message, wParam, lParam);
    try {
        return receive(*notice, message, wParam, lParam);
    } catch (...) {
        return 0; // out of memory; Windows cannot handle exceptions
    }
}

void registerNoticeClass(const wchar_t* windowClass)
{
    WNDCLASSW record{};
    record.lpfnWndProc = noticeProcedure;
    record.hInstance = GetModuleHandleW(nullptr);
    record.hIcon = LoadIconW(record.hInstance, MAKEINTRESOURCEW(IDI_COMPANION));
    record.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    record.lpszClassName = windowClass;
    RegisterClassW(&record);
}

// Centred on its owner and not wider, so that it hides no host; but within the work area.
Area firstPlace(HWND owner)
{
    RECT work{};
    RECT area{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    GetWindowRect(owner, &area);
    const LONG width = std::min<LONG>(firstWidth, area.right - area.left);
    const LONG left = (area.left + area.right - width) / 2;
    const LONG top = (area.top + area.bottom - firstHeight) / 2;
    return {static_cast<int>(std::max(std::min(left, work.right - width), work.left)),
            static_cast<int>(std::max(std::min(top, work.bottom - firstHeight), work.top)),
            static_cast<int>(width), firstHeight};
}

BOOL CALLBACK stopAtClass(HWND window, LPARAM lParam)
{
    auto& search = *reinterpret_cast<Search*>(lParam);
    wchar_t name[64];
    if (GetClassNameW(window, name, 64) == 0 || search.windowClass != name)
        return TRUE;
    search.found = window;
    return FALSE;
}

HWND findWindow(const wchar_t* windowClass)
{
    Search search{windowClass};
    EnumThreadWindows(GetCurrentThreadId(), stopAtClass, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

HWND createWindow(HWND owner, const wchar_t* windowClass, MakeNoticeWindow make)
{
    registerNoticeClass(windowClass);
    const Area first = firstPlace(owner);
    // The window owns the record from WM_NCCREATE to WM_NCDESTROY.
    return CreateWindowExW(WS_EX_CONTROLPARENT, windowClass, L"",
                           WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, first.left, first.top,
                           first.width, first.height, owner, nullptr, GetModuleHandleW(nullptr),
                           make().release());
}

} // namespace

NoticeWindow* openNoticeWindow(HWND owner, const wchar_t* windowClass, MakeNoticeWindow make)
{
    HWND open = findWindow(windowClass);
    HWND window = open != nullptr ? open : createWindow(owner, windowClass, make);
    return window == nullptr ? nullptr : noticeWindowOf(window);
}

void showNoticeWindow(const NoticeWindow& notice, const std::wstring& title)
{
    SetWindowTextW(notice.window, title.c_str());
    InvalidateRect(notice.window, nullptr, TRUE);
    ShowWindow(notice.window, SW_SHOWNOACTIVATE);
}

void drawTitle(const NoticeWindow& notice, HDC context, const Area& place, std::wstring_view text)
{
    drawLine(context, place, text, notice.look.title.get(), titleColour, lineFormat);
}

} // namespace companion
