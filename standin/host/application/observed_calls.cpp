#include "application/observed_calls.h"

#include "application/imports.h"
#include "control.h"
#include "core/call_text.h"
#include "core/lock.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace standin {

namespace {

// ---- Message boxes -----------------------------------------------------------------------------

constexpr UINT answerEveryMs = 10;

std::atomic<bool> isAnswering{false};

// The caption of the innermost open box of this thread.
thread_local std::wstring openCaption;

BOOL CALLBACK answerBox(HWND window, LPARAM)
{
    constexpr std::wstring_view dialogClass = L"#32770";
    wchar_t className[16] = L"";
    GetClassNameW(window, className, 16);
    std::wstring title(static_cast<size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    title.resize(
        static_cast<size_t>(GetWindowTextW(window, title.data(), static_cast<int>(title.size()))));
    if (className != dialogClass || title != openCaption)
        return TRUE;
    PostMessageW(window, WM_COMMAND, IDOK, 0);
    return FALSE; // the topmost one is the innermost
}

// Runs in the box's own message loop, so the box exists and accepts the answer.
void CALLBACK answerOpenBox(HWND, UINT, UINT_PTR, DWORD)
{
    EnumThreadWindows(GetCurrentThreadId(), answerBox, 0);
}

int showAnsweredBox(HWND owner, LPCWSTR text, LPCWSTR caption, UINT type)
{
    const std::wstring outerCaption = std::exchange(openCaption, caption ? caption : L"Error");
    const UINT_PTR timer = SetTimer(nullptr, 0, answerEveryMs, answerOpenBox);
    const int answer = MessageBoxW(owner, text, caption, type);
    KillTimer(nullptr, timer);
    openCaption = outerCaption;
    return answer;
}

// ---- Popup menus -------------------------------------------------------------------------------

struct MenuRow {
    std::wstring text;
    UINT id = 0;
    bool isSeparator = false;
    bool isDisabled = false;
};

Lock chosenLock;
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

// The id of the first enabled row with this text, or 0. An empty text matches no row.
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

void observeModule(HMODULE module)
{
    redirectImports(module, &MessageBoxW, &observedMessageBox);
    redirectImports(module, &TrackPopupMenu, &observedPopupMenu);
}

void answerMessageBoxes(bool on)
{
    isAnswering = on;
}

bool areMessageBoxesAnswered()
{
    return isAnswering;
}

int WINAPI observedMessageBox(HWND owner, LPCWSTR text, LPCWSTR caption, UINT type)
{
    const int answer = isAnswering ? showAnsweredBox(owner, text, caption, type)
                                   : MessageBoxW(owner, text, caption, type);
    trace(callLine("message-box", caption, text));
    return answer;
}

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
