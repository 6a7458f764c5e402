// The message boxes and popup menus of an observed module.
#include "host/mastercam.h"
#include "support/host_fixture.h"

#include <thread>

using namespace testing_support;

namespace {

class MessageBoxes : public HostFixture {};

class PopupMenus : public HostFixture {
protected:
    PopupMenus()
    {
        AppendMenuW(menu, MF_STRING | MF_GRAYED, 1, L"TORVA ZEM");
        AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
        AppendMenuW(menu, MF_STRING, 0xF0AD4F02, L"Open \"it\"");
        AppendMenuW(menu, MF_STRING, 3, L"");
        AppendMenuW(menu, MF_STRING | MF_DISABLED, 4, L"About");
        AppendMenuW(menu, MF_STRING, 5, L"About");
    }
    ~PopupMenus() override { DestroyMenu(menu); }

    UINT show(UINT flags = TPM_RETURNCMD)
    {
        return static_cast<UINT>(TrackPopupMenu(menu, flags, 10, 10, 0, owner, nullptr));
    }
    UINT choose(const wchar_t* item)
    {
        standin::chooseNext(item);
        return show();
    }

    const HMENU menu = CreatePopupMenu();
    const HWND owner = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr,
                                       nullptr, nullptr);
    const Lines line = {LR"(ui menu(!"TORVA ZEM", -, "Open "it"", "", !"About", "About"))"};
};

BOOL CALLBACK cancelDialog(HWND window, LPARAM)
{
    wchar_t name[16] = L"";
    GetClassNameW(window, name, 16);
    if (std::wstring_view(name) == L"#32770")
        PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
    return TRUE;
}

void CALLBACK cancelDialogs(HWND, UINT, UINT_PTR, DWORD)
{
    EnumThreadWindows(GetCurrentThreadId(), cancelDialog, 0);
}

void CALLBACK endMenu(HWND, UINT, UINT_PTR, DWORD)
{
    EndMenu();
}

} // namespace

TEST_F(MessageBoxes, areTracedAndClosed)
{
    EXPECT_EQ(MessageBoxW(nullptr, L"Failed to load file.", L"TORVA ZEM", MB_OKCANCEL), IDOK);
    EXPECT_EQ(newTrace(), Lines{LR"(ui message-box("TORVA ZEM", "Failed to load file."))"});
}

TEST_F(MessageBoxes, areClosedForAnyCaptionAndOwner)
{
    const HWND main = get_MainFrame()->GetSafeHwnd();
    EXPECT_EQ(MessageBoxW(nullptr, L"a", nullptr, MB_OK), IDOK);
    EXPECT_EQ(MessageBoxW(main, L"", L"", MB_OK), IDOK);
    EXPECT_EQ(newTrace(), (Lines{L"ui message-box(null, \"a\")", L"ui message-box(\"\", \"\")"}));
}

TEST_F(MessageBoxes, areClosedOnOtherThreads)
{
    int answer = 0;
    std::thread([&] { answer = MessageBoxW(nullptr, L"a", L"b", MB_OK); }).join();
    EXPECT_EQ(answer, IDOK);
    EXPECT_EQ(newTrace(), Lines{L"other message-box(\"b\", \"a\")"});
}

TEST_F(MessageBoxes, stayOpenWhenNotAnswered)
{
    constexpr UINT longAfterAnAnswerMs = 300;
    standin::answerMessageBoxes(false);
    const UINT_PTR timer = SetTimer(nullptr, 0, longAfterAnAnswerMs, cancelDialogs);
    EXPECT_EQ(MessageBoxW(nullptr, L"a", L"b", MB_OKCANCEL), IDCANCEL);
    KillTimer(nullptr, timer);
    EXPECT_EQ(newTrace(), Lines{L"ui message-box(\"b\", \"a\")"});
}

TEST_F(PopupMenus, returnChosenCommand)
{
    const std::pair<const wchar_t*, UINT> choices[] = {
        {L"Open \"it\"", 0xF0AD4F02},
        {L"About", 5},     // the first enabled row with this text
        {L"TORVA ZEM", 0}, // disabled
        {L"Open", 0},      // no row
        {L"", 0},          // dismissed, although a row has no text
    };
    for (const auto& [item, command] : choices) {
        EXPECT_EQ(choose(item), command) << toUtf8(item);
        EXPECT_EQ(newTrace(), line) << toUtf8(item);
    }
}

TEST_F(PopupMenus, postCommandToOwner)
{
    standin::chooseNext(L"About");
    EXPECT_TRUE(show(0) != 0);
    MSG message{};
    ASSERT_TRUE(PeekMessageW(&message, owner, WM_COMMAND, WM_COMMAND, PM_REMOVE));
    EXPECT_EQ(message.wParam, 5u);
    EXPECT_EQ(newTrace(), line);
}

TEST_F(PopupMenus, openWithoutChosenItem)
{
    EXPECT_EQ(choose(L"About"), 5u);
    newTrace();
    const UINT_PTR timer = SetTimer(nullptr, 0, 50, endMenu);
    EXPECT_EQ(show(), 0u); // the choice applied to one menu only
    KillTimer(nullptr, timer);
    EXPECT_EQ(newTrace(), line);
}
