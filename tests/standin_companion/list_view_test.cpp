// The event list, which keeps only the newest rows.
#include "standin/companion/ui/list_view.h"

#include <gtest/gtest.h>

#include <bit>

using namespace companion;

namespace {

int inserted = 0;
WNDPROC listsOwn = nullptr;

LRESULT CALLBACK countInsertions(HWND list, UINT message, WPARAM wParam, LPARAM lParam)
{
    inserted += message == LVM_INSERTITEMW ? 1 : 0;
    return CallWindowProcW(listsOwn, list, message, wParam, lParam);
}

// Imported, the library would be loaded at the start of each test of this program.
void registerListClass()
{
    using Register = decltype(&InitCommonControlsEx);
    const auto registerClasses = std::bit_cast<Register>(
        GetProcAddress(LoadLibraryW(L"comctl32.dll"), "InitCommonControlsEx"));
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_LISTVIEW_CLASSES};
    registerClasses(&classes);
}

class EventList : public ::testing::Test {
protected:
    EventList()
    {
        registerListClass();
        list = createList(parent, 1);
        setColumns(list, {{L"Event", 0}});
        listsOwn = reinterpret_cast<WNDPROC>(
            SetWindowLongPtrW(list, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&countInsertions)));
        inserted = 0;
    }
    ~EventList() override { DestroyWindow(parent); }

    void append(int first, int last)
    {
        std::vector<ListRow> rows;
        for (int i = first; i <= last; ++i)
            rows.push_back({{std::to_wstring(i)}});
        appendRows(list, rows, 5);
    }
    std::wstring shown() const
    {
        std::wstring all;
        for (int row = 0; row < SendMessageW(list, LVM_GETITEMCOUNT, 0, 0); ++row) {
            wchar_t text[20] = L"";
            LVITEMW item{};
            item.pszText = text;
            item.cchTextMax = 20;
            SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row),
                         reinterpret_cast<LPARAM>(&item));
            all += text + std::wstring(L" ");
        }
        return all;
    }

    HWND parent = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 300, 200, nullptr, nullptr,
                                  nullptr, nullptr);
    HWND list = nullptr;
};

} // namespace

TEST_F(EventList, keepsTheNewestRows)
{
    append(1, 3);
    EXPECT_EQ(shown(), L"1 2 3 ");
    append(4, 6);
    EXPECT_EQ(shown(), L"2 3 4 5 6 ");
    EXPECT_EQ(inserted, 6);
}

TEST_F(EventList, insertsNoRowAboveTheLimit)
{
    append(1, 2);
    append(3, 1000);
    EXPECT_EQ(shown(), L"996 997 998 999 1000 ");
    EXPECT_EQ(inserted, 7);
}
