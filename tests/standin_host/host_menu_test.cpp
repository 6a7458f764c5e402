// The main window's menu.
#include "host/host.h"
#include "support/host_fixture.h"

using namespace testing_support;

namespace {

int lastEvent = 0;

int keepMenuEvent(int code)
{
    lastEvent = code;
    return 0;
}

int throwException(int)
{
    throw new CException;
}

std::wstring textAt(HMENU menu, int place)
{
    wchar_t text[100] = L"";
    GetMenuStringW(menu, static_cast<UINT>(place), text, 100, MF_BYPOSITION);
    return text;
}

class HostMenu : public HostFixture {
protected:
    HMENU menu(int place) const { return GetSubMenu(GetMenu(window), place); }

    std::vector<std::wstring> rows(int place) const
    {
        std::vector<std::wstring> texts;
        for (int row = 0; row < GetMenuItemCount(menu(place)); ++row)
            texts.push_back(textAt(menu(place), row));
        return texts;
    }
    // Sends the command of the row with this text.
    void click(int place, const std::wstring& text) const
    {
        for (int row = 0; row < GetMenuItemCount(menu(place)); ++row)
            if (textAt(menu(place), row) == text)
                SendMessageW(window, WM_COMMAND, GetMenuItemID(menu(place), row), 0);
    }

    const HWND window = get_MainFrame()->GetSafeHwnd();
};

constexpr int file = 0;
constexpr int addIn = 1;
constexpr int events = 2;
constexpr int view = 3;
constexpr int edit = 4;

bool wasDisabled = false;

void CALLBACK closeModalDialog(HWND, UINT, UINT_PTR, DWORD)
{
    const HWND dialog = FindWindowW(L"#32770", L"Mastercam");
    wasDisabled = wasDisabled || !IsWindowEnabled(get_MainFrame()->GetSafeHwnd());
    if (dialog && wasDisabled)
        PostMessageW(dialog, WM_COMMAND, IDOK, 0);
}

} // namespace

TEST_F(HostMenu, listsEveryExport)
{
    EXPECT_EQ(rows(addIn),
              (Lines{L"m_main", L"m_load", L"m_save", L"m_about", L"m_tools", L"importNCqueue",
                     L"importNC", L"renameNC", L"DrawTool", L"TestFunction", L"m_version",
                     L"m_open", L"m_notify", L"m_close"}));
}

TEST_F(HostMenu, callsExports)
{
    ASSERT_TRUE(standin::loadAddIn(programFolder() + L"chooks\\catread5x.dll"));
    newTrace();
    click(addIn, L"m_notify");
    click(addIn, L"m_main"); // not an export of this DLL
    EXPECT_EQ(newTrace(), (Lines{L"ui catread5x.m_notify(0) -> 0", L"ui m_notify(0) -> 0"}));
}

TEST_F(HostMenu, sendsHostEvents)
{
    standin::setEventSink(keepMenuEvent);
    for (const int code : {3, 4, 5, 6, 37, 52}) {
        click(events, L"Event " + std::to_wstring(code));
        EXPECT_EQ(lastEvent, code);
        EXPECT_EQ(newTrace(), Lines{L"ui m_notify(" + std::to_wstring(code) + L") -> 0"});
    }
    EXPECT_EQ(rows(events).size(), 6u);
    standin::setEventSink(nullptr);
    click(events, L"Event 3");
    EXPECT_EQ(newTrace(), Lines{});
}

TEST_F(HostMenu, catchesExceptionsFromEvents)
{
    standin::setEventSink(throwException);
    click(events, L"Event 37");
    EXPECT_EQ(newTrace(), Lines{L"ui m_notify(37) raised"});
    standin::setEventSink(nullptr);
}

TEST_F(HostMenu, togglesBackplot)
{
    click(view, L"&Backplot");
    EXPECT_TRUE(BackplotActive());
    click(view, L"&Backplot");
    EXPECT_FALSE(BackplotActive());
}

TEST_F(HostMenu, addsFinishingPassAtEnd)
{
    const std::wstring path = makePart();
    writeBytes(path, "mastercam part 1\n\n[operation]\nid = 7\ndepth = -2\npath = 0 0 10 20\n");
    ASSERT_TRUE(standin::putPart(path));
    EXPECT_FALSE(has_db_changed());
    click(edit, L"Add a &Finishing Pass");
    EXPECT_TRUE(has_db_changed());
    operation_node* chain = nullptr;
    list_manager(1, L"", 0, &chain);
    ASSERT_NE(chain->next, nullptr);
    EXPECT_EQ(chain->next->op.operationId, 8);
    EXPECT_EQ(chain->next->next, nullptr);
    EXPECT_EQ(TpMainOpMgr.GetMainOpList().GetSize(), 2);
    ASSERT_TRUE(CFile_DoFileSave(path.c_str(), nullptr, false, false));
    const std::string saved = readBytes(path).value_or("");
    EXPECT_NE(saved.find("depth = -2.5\n"), saved.npos) << saved;
    EXPECT_NE(saved.find("path = 0.75 1.5 9.25 18.5\n"), saved.npos) << saved;
}

TEST_F(HostMenu, addsNoPassToEmptyPart)
{
    click(edit, L"Add a &Finishing Pass");
    EXPECT_FALSE(has_db_changed());
}

TEST_F(HostMenu, modalDialogDisablesMainWindow)
{
    const UINT_PTR timer = SetTimer(nullptr, 0, 20, closeModalDialog);
    click(file, L"Modal &Dialog...");
    KillTimer(nullptr, timer);
    EXPECT_TRUE(wasDisabled);
    EXPECT_TRUE(IsWindowEnabled(window));
}

TEST_F(HostMenu, newFileRemovesNameFromTitle)
{
    standin::setState("geo_filename", L"C:\\a.mcam");
    standin::setState("title", L"Mastercam  C:\\A.MCAM");
    click(file, L"&New");
    EXPECT_EQ(standin::state("geo_filename"), L"");
    EXPECT_EQ(standin::state("title"), L"Mastercam");
}

TEST_F(HostMenu, quitsByExitAndCloseButton)
{
    click(file, L"E&xit");
    EXPECT_TRUE(standin::isQuitting());
    EXPECT_TRUE(IsWindow(window)); // the add-in is closed first
    standin::stopHost();
    ASSERT_TRUE(standin::startHost({}));
    EXPECT_FALSE(standin::isQuitting());
    SendMessageW(get_MainFrame()->GetSafeHwnd(), WM_CLOSE, 0, 0);
    EXPECT_TRUE(standin::isQuitting());
}
