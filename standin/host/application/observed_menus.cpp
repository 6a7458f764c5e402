#include "application/observed_calls.h"
#include "control.h"
#include "core/call_text.h"

#include <algorithm>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace standin {

namespace {

struct MenuRow {
    std::wstring text;
    UINT id = 0;
    bool isSeparator = false;
    bool isDisabled = false;
};

std::mutex chosenLock;
std::optional<std::wstring> chosenItem;

MenuRow rowAt(HMENU menu, UINT place)
{
    MENUITEMINFOW information{};
    information.cbSize = sizeof information;
    information.fMask = MIIM_FTYPE | MIIM_STATE | MIIM_ID | MIIM_STRING;
    GetMenuItemInfoW(menu, place, TRUE, &information);
    MenuRow row;
    row.id = information.wID;
    row.isSeparator = (information.fType & MFT_SEPARATOR) != 0;
    row.isDisabled = (information.fState & (MF_DISABLED | MF_GRAYED)) != 0;
    row.text.resize(information.cch + 1);
    information.dwTypeData = row.text.data();
    ++information.cch;
    GetMenuItemInfoW(menu, place, TRUE, &information);
    row.text.resize(information.cch);
    return row;
}

std::vector<MenuRow> rowsOf(HMENU menu)
{
    std::vector<MenuRow> rows;
    const int count = GetMenuItemCount(menu);
    rows.reserve(static_cast<size_t>(std::max(count, 0)));
    for (int place = 0; place < count; ++place)
        rows.push_back(rowAt(menu, static_cast<UINT>(place)));
    return rows;
}

std::wstring rowText(const MenuRow& row)
{
    if (row.isSeparator)
        return L"-";
    return (row.isDisabled ? L"!" : L"") + callText(row.text.c_str());
}

std::wstring menuLine(const std::vector<MenuRow>& rows)
{
    std::wstring line = L"menu(";
    for (const MenuRow& row : rows)
        line.append(&row == rows.data() ? L"" : L", ").append(rowText(row));
    return line + L")";
}

// The first enabled row of that text, or 0; an empty text is no row's, also where a row has none.
UINT idOf(const std::vector<MenuRow>& rows, const std::wstring& text)
{
    for (const MenuRow& row : rows)
        if (!row.isSeparator && !row.isDisabled && !text.empty() && row.text == text)
            return row.id;
    return 0;
}

std::optional<std::wstring> takeChosenItem()
{
    const std::scoped_lock guard(chosenLock);
    return std::exchange(chosenItem, std::nullopt);
}

BOOL choose(UINT id, UINT flags, HWND owner)
{
    if (flags & TPM_RETURNCMD)
        return static_cast<BOOL>(id);
    if (id != 0)
        PostMessageW(owner, WM_COMMAND, id, 0);
    return TRUE;
}

} // namespace

void chooseNext(const std::wstring& item)
{
    const std::scoped_lock guard(chosenLock);
    chosenItem = item;
}

BOOL WINAPI observedPopupMenu(HMENU menu, UINT flags, int x, int y, int reserved, HWND owner,
                              const RECT* excluded)
{
    const std::vector<MenuRow> rows = rowsOf(menu);
    const std::optional<std::wstring> item = takeChosenItem();
    const BOOL answer = item ? choose(idOf(rows, *item), flags, owner)
                             : TrackPopupMenu(menu, flags, x, y, reserved, owner, excluded);
    trace(menuLine(rows));
    return answer;
}

} // namespace standin
