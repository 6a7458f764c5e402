#include "standin/companion/ui/sheet_window.h"

#include "peer/exchange_paths.h"
#include "standin/companion/ui/list_view.h"
#include "standin/companion/ui/notice_window.h"

#include <algorithm>
#include <memory>

namespace companion {
namespace {

constexpr wchar_t sheetClass[] = L"ZemSheetWindow";
constexpr int operationsId = 100;
constexpr int sheetToolsId = 101;

class SheetWindow : public NoticeWindow {
public:
    HWND operations = nullptr, tools = nullptr, text = nullptr;
    bool isText = false;

    void createChildren() override;
    void placeChildren(int clientWidth, int clientHeight) override;
    void paintBody(HDC context, int clientWidth, int clientHeight) const override;
};

struct SheetLayout {
    Area operationsTitle, operations, toolsTitle, tools, text;
};

// The operations get three fifths of the height of both lists.
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

void SheetWindow::createChildren()
{
    operations = createList(window, operationsId);
    setColumns(operations, {{L"No.", 40, true},
                            {L"Type", 70},
                            {L"Group", 112},
                            {L"Tool", 44, true},
                            {L"Depth", 60, true},
                            {L"NC file", 132},
                            {L"Time", 0, true}});
    tools = createList(window, sheetToolsId);
    setColumns(tools, {{L"Tool", 48, true},
                       {L"Diameter", 76, true},
                       {L"Corner radius", 96, true},
                       {L"Feed", 76, true},
                       {L"Comment", 0}});
    constexpr DWORD textStyle = WS_CHILD | WS_VSCROLL | WS_HSCROLL | WS_TABSTOP | ES_MULTILINE |
                                ES_READONLY | ES_AUTOVSCROLL | ES_AUTOHSCROLL;
    text = CreateWindowExW(WS_EX_CLIENTEDGE, L"EDIT", L"", textStyle, 0, 0, 0, 0, window, nullptr,
                           GetModuleHandleW(nullptr), nullptr);
}

void SheetWindow::placeChildren(int clientWidth, int clientHeight)
{
    const SheetLayout layout = layOutSheet(clientWidth, clientHeight);
    moveTo(operations, layout.operations);
    moveTo(tools, layout.tools);
    moveTo(text, layout.text);
    fitLastColumn(operations);
    fitLastColumn(tools);
}

void SheetWindow::paintBody(HDC context, int clientWidth, int clientHeight) const
{
    if (!isText) {
        const SheetLayout layout = layOutSheet(clientWidth, clientHeight);
        drawTitle(*this, context, layout.operationsTitle, L"Operations");
        drawTitle(*this, context, layout.toolsTitle, L"Tools");
    }
}

std::unique_ptr<NoticeWindow> makeSheetWindow()
{
    return std::make_unique<SheetWindow>();
}

std::wstring partName(const ReceivedSheet& sheet)
{
    const std::wstring name =
        sheet.content ? peer::fileNameOf(sheet.content->file) : std::wstring();
    return name.empty() ? peer::fileNameOf(sheet.file) : name;
}

std::wstring detailsOf(const ReceivedSheet& sheet)
{
    if (!sheet.content)
        return sheet.file;
    const std::wstring count = std::to_wstring(sheet.content->operations.size());
    std::wstring details = L"Operations: " + count;
    if (!sheet.content->seconds.empty())
        details += L"     Time: " + durationText(sheet.content->seconds);
    if (!sheet.content->machine.empty())
        details += L"     Machine: " + peer::fileNameOf(sheet.content->machine);
    return details;
}

// An edit control breaks lines only at a carriage return and a line feed, and ends at a NUL.
std::wstring editText(const std::wstring& text)
{
    std::wstring result;
    for (const wchar_t c : text)
        if (c == L'\n')
            result += L"\r\n";
        else if (c != L'\r')
            result += c == L'\0' ? L' ' : c;
    return result;
}

void fill(SheetWindow& window, const ReceivedSheet& sheet)
{
    window.isText = !sheet.content;
    window.heading = partName(sheet);
    window.details = detailsOf(sheet);
    setRows(window.operations, numberedRows(operationRows(sheet.content.value_or(SetupSheet{}))));
    setRows(window.tools, numberedRows(toolRows(sheet.content.value_or(SetupSheet{}))));
    SetWindowTextW(window.text, window.isText ? editText(sheet.text).c_str() : L"");
    ShowWindow(window.operations, window.isText ? SW_HIDE : SW_SHOW);
    ShowWindow(window.tools, window.isText ? SW_HIDE : SW_SHOW);
    ShowWindow(window.text, window.isText ? SW_SHOW : SW_HIDE);
}

} // namespace

void showSheet(HWND owner, const ReceivedSheet& sheet)
{
    auto* window = static_cast<SheetWindow*>(openNoticeWindow(owner, sheetClass, makeSheetWindow));
    if (window == nullptr)
        return;
    fill(*window, sheet);
    showNoticeWindow(*window,
                     L"Setup sheet " + std::to_wstring(sheet.id) + L": " + partName(sheet));
}

} // namespace companion
