#include "standin/companion/ui/list_view.h"

#include "standin/companion/ui/look.h"

#include <algorithm>

namespace companion {
namespace {

LRESULT tell(HWND list, UINT message, WPARAM wParam, const void* record)
{
    return SendMessageW(list, message, wParam, reinterpret_cast<LPARAM>(record));
}

int rowCount(HWND list)
{
    return static_cast<int>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
}

LVITEMW cell(int row, size_t column, const std::wstring& text)
{
    LVITEMW item{};
    item.mask = LVIF_TEXT;
    item.iItem = row;
    item.iSubItem = static_cast<int>(column);
    item.pszText = const_cast<wchar_t*>(text.c_str());
    return item;
}

void insertRow(HWND list, int place, const ListRow& row)
{
    LVITEMW first = cell(place, 0, row.cells.front());
    first.mask |= LVIF_PARAM;
    first.lParam = row.key;
    const int inserted = static_cast<int>(tell(list, LVM_INSERTITEMW, 0, &first));
    for (size_t column = 1; column < row.cells.size(); ++column) {
        const LVITEMW item = cell(inserted, column, row.cells[column]);
        tell(list, LVM_SETITEMW, 0, &item);
    }
}

void selectRow(HWND list, int row)
{
    LVITEMW item{};
    item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    item.state = item.stateMask;
    tell(list, LVM_SETITEMSTATE, static_cast<WPARAM>(row), &item);
}

int findKey(const std::vector<ListRow>& rows, std::optional<LPARAM> key)
{
    const auto found = std::find_if(rows.begin(), rows.end(),
                                    [&](const ListRow& row) { return key && row.key == *key; });
    return found == rows.end() ? 0 : static_cast<int>(found - rows.begin());
}

} // namespace

HWND createList(HWND parent, int controlId)
{
    constexpr DWORD style = WS_CHILD | WS_VISIBLE | WS_TABSTOP | LVS_REPORT | LVS_SINGLESEL |
                            LVS_SHOWSELALWAYS | LVS_NOSORTHEADER;
    HWND list = CreateWindowExW(WS_EX_CLIENTEDGE, WC_LISTVIEWW, L"", style, 0, 0, 0, 0, parent,
                                reinterpret_cast<HMENU>(static_cast<INT_PTR>(controlId)),
                                GetModuleHandleW(nullptr), nullptr);
    constexpr LPARAM extended = LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER;
    SendMessageW(list, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, extended);
    return list;
}

void setColumns(HWND list, std::initializer_list<Column> columns)
{
    int place = 0;
    for (const Column& column : columns) {
        LVCOLUMNW record{};
        record.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
        record.fmt = column.isNumber ? LVCFMT_RIGHT : LVCFMT_LEFT;
        record.cx = column.width;
        record.pszText = const_cast<wchar_t*>(column.title);
        tell(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(place), &record);
        ++place;
    }
}

void fitLastColumn(HWND list)
{
    HWND header = reinterpret_cast<HWND>(SendMessageW(list, LVM_GETHEADER, 0, 0));
    const auto last = static_cast<WPARAM>(SendMessageW(header, HDM_GETITEMCOUNT, 0, 0) - 1);
    RECT area{};
    GetClientRect(list, &area);
    LONG left = area.right;
    for (WPARAM column = 0; column < last; ++column)
        left -= static_cast<LONG>(SendMessageW(list, LVM_GETCOLUMNWIDTH, column, 0));
    SendMessageW(list, LVM_SETCOLUMNWIDTH, last, std::max(left, 40L));
}

std::vector<ListRow> numberedRows(const std::vector<std::vector<std::wstring>>& rows)
{
    std::vector<ListRow> result;
    result.reserve(rows.size());
    for (const auto& cells : rows)
        result.push_back({cells, static_cast<LPARAM>(result.size())});
    return result;
}

void setRows(HWND list, const std::vector<ListRow>& rows)
{
    const std::optional<LPARAM> key = selectedKey(list);
    SendMessageW(list, WM_SETREDRAW, FALSE, 0);
    SendMessageW(list, LVM_DELETEALLITEMS, 0, 0);
    for (size_t row = 0; row < rows.size(); ++row)
        insertRow(list, static_cast<int>(row), rows[row]);
    SendMessageW(list, WM_SETREDRAW, TRUE, 0);
    if (!rows.empty())
        selectRow(list, findKey(rows, key));
    fitLastColumn(list);
}

void appendRows(HWND list, const std::vector<ListRow>& rows, int most)
{
    const int added = std::min(static_cast<int>(rows.size()), most);
    SendMessageW(list, WM_SETREDRAW, FALSE, 0);
    // First, so that no row is inserted just to be removed again.
    while (rowCount(list) > most - added)
        SendMessageW(list, LVM_DELETEITEM, 0, 0);
    for (auto row = rows.end() - added; row != rows.end(); ++row)
        insertRow(list, rowCount(list), *row);
    SendMessageW(list, WM_SETREDRAW, TRUE, 0);
    fitLastColumn(list);
    SendMessageW(list, LVM_ENSUREVISIBLE, static_cast<WPARAM>(rowCount(list) - 1), FALSE);
    InvalidateRect(list, nullptr, FALSE);
}

LRESULT drawListRow(NMLVCUSTOMDRAW& drawing)
{
    if (drawing.nmcd.dwDrawStage == CDDS_PREPAINT)
        return CDRF_NOTIFYITEMDRAW;
    if (drawing.nmcd.dwDrawStage != CDDS_ITEMPREPAINT)
        return CDRF_DODEFAULT;
    // Replaces the control's own highlight, which depends on the keyboard focus.
    const LRESULT state = SendMessageW(drawing.nmcd.hdr.hwndFrom, LVM_GETITEMSTATE,
                                       drawing.nmcd.dwItemSpec, LVIS_SELECTED);
    if ((state & LVIS_SELECTED) != 0) {
        drawing.clrText = titleColour;
        drawing.clrTextBk = selectionColour;
        drawing.nmcd.uItemState &= ~static_cast<UINT>(CDIS_SELECTED);
    }
    return CDRF_DODEFAULT;
}

std::optional<LPARAM> selectedKey(HWND list)
{
    const auto row = static_cast<int>(
        SendMessageW(list, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
    if (row < 0)
        return std::nullopt;
    LVITEMW item{};
    item.mask = LVIF_PARAM;
    item.iItem = row;
    tell(list, LVM_GETITEMW, 0, &item);
    return item.lParam;
}

} // namespace companion
