// A list with columns, in which one row can be selected.
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
    int width;             // pixels; 0: the remaining width of the list
    bool isNumber = false; // aligned right
};

struct ListRow {
    std::vector<std::wstring> cells;
    LPARAM key = 0; // identifies the row
};

// A child window with the control id; null when it cannot be created.
HWND createList(HWND parent, int controlId);

void setColumns(HWND list, std::initializer_list<Column> columns);

// Gives the remaining width to the column of width 0. Call it when the size of the list has
// changed.
void fitLastColumn(HWND list);

// Rows of these cells; the key of each is its index.
std::vector<ListRow> numberedRows(const std::vector<std::vector<std::wstring>>& rows);

// Replaces all rows. The row with the key of the selected one stays selected; without such a row,
// the first one is.
void setRows(HWND list, const std::vector<ListRow>& rows);

// Adds rows at the end and scrolls to the last one; removes the oldest rows above `most`.
void appendRows(HWND list, const std::vector<ListRow>& rows, int most);

// The result for a NM_CUSTOMDRAW notification of a list: the selected row keeps its colour while
// another window or list has the keyboard focus, because the user must see what the buttons act on.
LRESULT drawListRow(NMLVCUSTOMDRAW& drawing);

// The key of the selected row.
std::optional<LPARAM> selectedKey(HWND list);

} // namespace companion
