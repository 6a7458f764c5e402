#include "sheetwindow.h"

#include "decisions/exchangepaths.h"
#include "listview.h"
#include "look.h"
#include "resource.h"

#include <algorithm>
#include <memory>

namespace companion {
namespace {

constexpr wchar_t windowClass[] = L"ZemSheetWindow";
constexpr int firstWidth = 720;
constexpr int firstHeight = 520;
constexpr int bandHeight = 58;
constexpr int margin = 14;
constexpr int titleHeight = 24;
constexpr int operationsId = 100;
constexpr int toolsId = 101;

struct SheetWindow {
    HWND window = nullptr, operations = nullptr, tools = nullptr, text = nullptr;
    Look look;
    std::wstring heading, details;
    bool isText = false;
};

struct SheetLayout {
    Rectangle operationsTitle, operations, toolsTitle, tools, text;
};

SheetWindow* sheetWindowOf(HWND window)
{
    return reinterpret_cast<SheetWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

// The operations get three fifths of the height that the lists share.
SheetLayout layOutSheet(int clientWidth, int clientHeight)
{
    const int width = std::max(clientWidth - 2 * margin, 0);
    const int top = bandHeight + margin / 2;
    const int lists = std::max(clientHeight - top - margin - margin / 2 - 2 * titleHeight, 0);
    const int operations = lists * 3 / 5;
    const int toolsTop = top + titleHeight + operations + margin / 2;
    return {.operationsTitle = {margin, top, width, titleHeight},
            .operations = {margin, top + titleHeight, width, operations},
            .toolsTitle = {margin, toolsTop, width, titleHeight},
            .tools = {margin, toolsTop + titleHeight, width, lists - operations},
            .text = {margin, bandHeight + margin, width,
                     std::max(clientHeight - bandHeight - 2 * margin, 0)}};
}

SheetLayout layoutOf(const SheetWindow& sheet)
{
    RECT client{};
    GetClientRect(sheet.window, &client);
    return layOutSheet(client.right, client.bottom);
}

void moveTo(HWND window, const Rectangle& place)
{
    SetWindowPos(window, nullptr, place.left, place.top, place.width, place.height,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

void placeChildren(const SheetWindow& sheet)
{
    const SheetLayout layout = layoutOf(sheet);
    moveTo(sheet.operations, layout.operations);
    moveTo(sheet.tools, layout.tools);
    moveTo(sheet.text, layout.text);
    fitLastColumn(sheet.operations);
    fitLastColumn(sheet.tools);
    InvalidateRect(sheet.window, nullptr, TRUE);
}

void createChildren(SheetWindow& sheet)
{
    sheet.look = makeLook();
    sheet.operations = createList(sheet.window, operationsId);
    setColumns(sheet.operations, {{L"No.", 48, true},
                                  {L"Type", 48, true},
                                  {L"Group", 150},
                                  {L"Tool", 48, true},
                                  {L"Depth", 76, true},
                                  {L"NC file", 150},
                                  {L"Time", 0, true}});
    sheet.tools = createList(sheet.window, toolsId);
    setColumns(sheet.tools, {{L"Tool", 48, true},
                             {L"Diameter", 76, true},
                             {L"Corner radius", 96, true},
                             {L"Feed", 76, true},
                             {L"Comment", 0}});
    constexpr DWORD textStyle = WS_CHILD | WS_VSCROLL | WS_HSCROLL | WS_TABSTOP | ES_MULTILINE |
                                ES_READONLY | ES_AUTOVSCROLL | ES_AUTOHSCROLL;
    sheet.text = CreateWindowExW(WS_EX_CLIENTEDGE, L"EDIT", L"", textStyle, 0, 0, 0, 0,
                                 sheet.window, nullptr, GetModuleHandleW(nullptr), nullptr);
    for (HWND child : {sheet.operations, sheet.tools, sheet.text}) {
        SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(sheet.look.text.get()), TRUE);
    }
    placeChildren(sheet);
}

void paint(const SheetWindow& sheet)
{
    PAINTSTRUCT record{};
    RECT client{};
    HDC context = BeginPaint(sheet.window, &record);
    GetClientRect(sheet.window, &client);
    const int width = client.right;
    fillArea(context, {0, 0, width, client.bottom}, backgroundColour);
    fillArea(context, {0, 0, width, bandHeight}, headerColour);
    fillArea(context, {0, bandHeight - 3, width, 3}, accentColour);
    constexpr UINT format = DT_LEFT | DT_VCENTER;
    drawLine(context, {16, 6, width - 32, 28}, sheet.heading, sheet.look.product.get(),
             headerTextColour, format);
    drawLine(context, {16, 33, width - 32, 18}, sheet.details, sheet.look.text.get(),
             faintHeaderTextColour, format);
    if (!sheet.isText) {
        const SheetLayout layout = layoutOf(sheet);
        drawLine(context, layout.operationsTitle, L"Operations", sheet.look.title.get(),
                 titleColour, format);
        drawLine(context, layout.toolsTitle, L"Tools", sheet.look.title.get(), titleColour, format);
    }
    EndPaint(sheet.window, &record);
}

LRESULT receive(SheetWindow& sheet, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_CREATE:
        createChildren(sheet);
        return 0;
    case WM_SIZE:
        placeChildren(sheet);
        return 0;
    case WM_PAINT:
        paint(sheet);
        return 0;
    case WM_CTLCOLORSTATIC: // of the text, which is read-only but no label
        return reinterpret_cast<LRESULT>(GetStockObject(WHITE_BRUSH));
    case WM_COMMAND:
        // The escape key comes as IDCANCEL.
        if (LOWORD(wParam) == IDCANCEL) {
            DestroyWindow(sheet.window);
        }
        return 0;
    case WM_NOTIFY:
        return reinterpret_cast<const NMHDR*>(lParam)->code == NM_CUSTOMDRAW
                   ? drawListRow(*reinterpret_cast<NMLVCUSTOMDRAW*>(lParam))
                   : 0;
    default:
        return DefWindowProcW(sheet.window, message, wParam, lParam);
    }
}

LRESULT CALLBACK windowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_NCCREATE) {
        auto* sheet = static_cast<SheetWindow*>(
            reinterpret_cast<const CREATESTRUCTW*>(lParam)->lpCreateParams);
        sheet->window = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(sheet));
    }
    SheetWindow* sheet = sheetWindowOf(window);
    if (message == WM_NCDESTROY) {
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        const std::unique_ptr<SheetWindow> owned(sheet);
        return DefWindowProcW(window, message, wParam, lParam);
    }
    if (sheet == nullptr) {
        return DefWindowProcW(window, message, wParam, lParam);
    }
    try {
        return receive(*sheet, message, wParam, lParam);
    } catch (...) {
        return 0; // out of memory; the system's callers know no exceptions
    }
}

void registerWindowClass()
{
    WNDCLASSW record{};
    record.lpfnWndProc = windowProcedure;
    record.hInstance = GetModuleHandleW(nullptr);
    record.hIcon = LoadIconW(record.hInstance, MAKEINTRESOURCEW(IDI_COMPANION));
    record.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    record.lpszClassName = windowClass;
    RegisterClassW(&record);
}

// In the middle of its owner, as far as the work area has room for it there.
POINT firstPlace(HWND owner)
{
    RECT work{};
    RECT area{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    GetWindowRect(owner, &area);
    const LONG left = (area.left + area.right - firstWidth) / 2;
    const LONG top = (area.top + area.bottom - firstHeight) / 2;
    return {std::max(std::min(left, work.right - firstWidth), work.left),
            std::max(std::min(top, work.bottom - firstHeight), work.top)};
}

HWND createWindow(HWND owner)
{
    registerWindowClass();
    const POINT place = firstPlace(owner);
    // The window owns the record from WM_NCCREATE to WM_NCDESTROY.
    return CreateWindowExW(WS_EX_CONTROLPARENT, windowClass, L"",
                           WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, place.x, place.y, firstWidth,
                           firstHeight, owner, nullptr, GetModuleHandleW(nullptr),
                           std::make_unique<SheetWindow>().release());
}

BOOL CALLBACK stopAtSheet(HWND window, LPARAM found)
{
    wchar_t name[64];
    if (GetClassNameW(window, name, 64) == 0 || std::wstring_view(name) != windowClass) {
        return TRUE;
    }
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

HWND findSheetWindow()
{
    HWND found = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), stopAtSheet, reinterpret_cast<LPARAM>(&found));
    return found;
}

std::wstring partName(const ReceivedSheet& sheet)
{
    const std::wstring name = sheet.content ? fileNameOf(sheet.content->file) : std::wstring();
    return name.empty() ? fileNameOf(sheet.file) : name;
}

std::wstring detailsOf(const ReceivedSheet& sheet)
{
    if (!sheet.content) {
        return sheet.file;
    }
    const std::wstring count = std::to_wstring(sheet.content->operations.size());
    std::wstring details = L"Operations: " + count;
    if (!sheet.content->seconds.empty()) {
        details += L"     Time: " + durationText(sheet.content->seconds);
    }
    if (!sheet.content->machine.empty()) {
        details += L"     Machine: " + fileNameOf(sheet.content->machine);
    }
    return details;
}

// An edit control breaks lines only at a carriage return and a line feed, and ends at a NUL.
std::wstring editText(const std::wstring& text)
{
    std::wstring result;
    for (const wchar_t c : text) {
        if (c == L'\n') {
            result += L"\r\n";
        } else if (c != L'\r') {
            result += c == L'\0' ? L' ' : c;
        }
    }
    return result;
}

std::vector<ListRow> listRows(const SheetRows& rows)
{
    std::vector<ListRow> result;
    for (const auto& cells : rows) {
        result.push_back({cells, static_cast<LPARAM>(result.size())});
    }
    return result;
}

void fill(SheetWindow& window, const ReceivedSheet& sheet)
{
    window.isText = !sheet.content;
    window.heading = partName(sheet);
    window.details = detailsOf(sheet);
    setRows(window.operations, listRows(operationRows(sheet.content.value_or(SetupSheet{}))));
    setRows(window.tools, listRows(toolRows(sheet.content.value_or(SetupSheet{}))));
    SetWindowTextW(window.text, window.isText ? editText(sheet.text).c_str() : L"");
    ShowWindow(window.operations, window.isText ? SW_HIDE : SW_SHOW);
    ShowWindow(window.tools, window.isText ? SW_HIDE : SW_SHOW);
    ShowWindow(window.text, window.isText ? SW_SHOW : SW_HIDE);
    InvalidateRect(window.window, nullptr, TRUE);
}

} // namespace

void showSheet(HWND owner, const ReceivedSheet& sheet)
{
    const HWND open = findSheetWindow();
    HWND window = open != nullptr ? open : createWindow(owner);
    if (window == nullptr) {
        return;
    }
    fill(*sheetWindowOf(window), sheet);
    const std::wstring title =
        L"Setup sheet " + std::to_wstring(sheet.id) + L": " + partName(sheet);
    SetWindowTextW(window, title.c_str());
    ShowWindow(window, SW_SHOWNOACTIVATE);
}

} // namespace companion
