// A list with columns, one row selectable.
#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <vector>
#include <windows.h>

#include <commctrl.h>

namespace companion {

struct Column {
    const wchar_t* title;
    int width;             // pixels; 0: what is left of the list's width
    bool isNumber = false; // aligned right
};

struct ListRow {
    std::vector<std::wstring> cells;
    LPARAM key = 0; // tells the row from the others
};

// A child window with the control id; null when it cannot be created.
HWND createList(HWND parent, int controlId);

void setColumns(HWND list, std::initializer_list<Column> columns);

// Gives the column of width 0 the width that is left. Call it when the list's size has changed.
void fitLastColumn(HWND list);

// Rows of these cells, each with its place, from 0, as the key.
std::vector<ListRow> numberedRows(const std::vector<std::vector<std::wstring>>& rows);

// Replaces all rows. The row with the key of the selected one stays selected; without such a row,
// the first one is.
void setRows(HWND list, const std::vector<ListRow>& rows);

// Adds rows at the end and scrolls to the last; the oldest rows go beyond `most` of them.
void appendRows(HWND list, const std::vector<ListRow>& rows, int most);

// The answer to a list's NM_CUSTOMDRAW: the selected row keeps its colour while another window or
// list has the keyboard, because what the buttons act on must stay readable.
LRESULT drawListRow(NMLVCUSTOMDRAW& drawing);

// The key of the selected row.
std::optional<LPARAM> selectedKey(HWND list);

} // namespace companion
