// The main window's menu.
#include "host/host.h"
#include "standin/companion/ui/layout.h"
#include "support/host_fixture.h"

#include <tuple>

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
constexpr int help = 5;

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
    EXPECT_EQ(
        rows(addIn),
        (Lines{L"Add-in menu (m_main)", L"Check out from TORVA ZEM (m_load)",
               L"Save to TORVA ZEM (m_save)", L"About TORVA ZEM (m_about)",
               L"Send the setup sheet to TORVA ZEM (m_tools)",
               L"Queue the NC programs for TORVA ZEM (importNCqueue)", L"No effect (importNC)",
               L"No effect (renameNC)", L"Draw the picture of a drill (DrawTool)",
               L"Make the machine group active (TestFunction)",
               L"Pass the host's version (m_version)", L"Start the add-in (m_open)",
               L"Event 0: no effect (m_notify)", L"Stop the add-in (m_close)"}));
}

TEST_F(HostMenu, callsExports)
{
    ASSERT_TRUE(standin::loadAddIn(programFolder() + L"chooks\\catread5x.dll"));
    newTrace();
    click(addIn, L"Event 0: no effect (m_notify)");
    click(addIn, L"Add-in menu (m_main)"); // not an export of this DLL
    EXPECT_EQ(newTrace(), (Lines{L"ui catread5x.m_notify(0) -> 0", L"ui m_notify(0) -> 0"}));
}

TEST_F(HostMenu, sendsHostEvents)
{
    standin::setEventSink(keepMenuEvent);
    EXPECT_EQ(rows(events),
              (Lines{L"Event 3: the add-in forgets the file", L"Event 4: no effect",
                     L"Event 5: file saved", L"Event 6: the add-in forgets the file",
                     L"Event 37: no effect", L"Event 52: the add-in forgets the file"}));
    for (const std::wstring& row : rows(events)) {
        click(events, row);
        EXPECT_EQ(row.find(L"Event " + std::to_wstring(lastEvent) + L":"), 0u);
        EXPECT_EQ(newTrace(), Lines{L"ui m_notify(" + std::to_wstring(lastEvent) + L") -> 0"});
    }
    standin::setEventSink(nullptr);
    click(events, L"Event 5: file saved");
    EXPECT_EQ(newTrace(), Lines{});
}

TEST_F(HostMenu, catchesExceptionsFromEvents)
{
    standin::setEventSink(throwException);
    click(events, L"Event 37: no effect");
    EXPECT_EQ(newTrace(), Lines{L"ui m_notify(37) raised"});
    standin::setEventSink(nullptr);
}

TEST_F(HostMenu, togglesBackplot)
{
    click(view, L"Run a &Backplot (requests wait)");
    EXPECT_TRUE(BackplotActive());
    click(view, L"Run a &Backplot (requests wait)");
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
    EXPECT_NE(saved.rfind("type = 2\n"), saved.npos) << saved;
}

TEST_F(HostMenu, finishesTheLastContourWithAnEndMill)
{
    for (const auto& [part, operationId, tool] :
         {std::tuple{L"bracket", 11, L"End mill 10 R0.5 finishing"},
          std::tuple{L"flange", 12, L"End mill 12 finishing"},
          std::tuple{L"clamp jaw", 5, L"End mill 20 roughing"},
          std::tuple{L"pump cover", 9, L"Groove mill 4"}}) {
        ASSERT_TRUE(standin::putPart(programFolder() + L"shipped\\companion\\parts\\" + part +
                                     L"\\v1.mcam"));
        click(edit, L"Add a &Finishing Pass");
        operation_node* last = nullptr;
        list_manager(1, L"", 0, &last);
        while (last->next)
            last = last->next;
        EXPECT_EQ(last->op.operationId, operationId);
        EXPECT_EQ(last->op.operationType, 2);
        EXPECT_EQ(std::wstring(last->op.tool.comment), tool);
    }
}

TEST_F(HostMenu, doesNotFinishHoles)
{
    const std::wstring path = makePart();
    writeBytes(path, "mastercam part 1\n\n[operation]\nid = 7\ntype = 5\npath = 0 0 10 20\n");
    ASSERT_TRUE(standin::putPart(path));
    click(edit, L"Add a &Finishing Pass");
    EXPECT_FALSE(has_db_changed());
    EXPECT_EQ(standin::shownNote(), L"The part has no contour to finish.");
}

TEST_F(HostMenu, addsNoPassToEmptyPart)
{
    click(edit, L"Add a &Finishing Pass");
    EXPECT_FALSE(has_db_changed());
}

TEST_F(HostMenu, modalDialogDisablesMainWindow)
{
    const UINT_PTR timer = SetTimer(nullptr, 0, 20, closeModalDialog);
    click(file, L"Show a Modal &Dialog (requests wait)...");
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

TEST_F(HostMenu, statusBarShowsEachOutcome)
{
    const std::wstring path = makePart();
    const std::wstring saved = installation.path(L"saved.mcam");
    const auto noteAfter = [this](int place, const std::wstring& text) {
        click(place, text);
        return standin::shownNote();
    };
    EXPECT_EQ(noteAfter(addIn, L"Save to TORVA ZEM (m_save)"), L"No add-in is loaded.");
    EXPECT_EQ(noteAfter(events, L"Event 5: file saved"),
              L"Event 5 was not sent: no add-in is loaded.");
    ASSERT_TRUE(standin::loadAddIn(programFolder() + L"chooks\\catread5x.dll"));
    EXPECT_EQ(noteAfter(addIn, L"Event 0: no effect (m_notify)"), L"m_notify returned 0");
    EXPECT_EQ(noteAfter(addIn, L"Save to TORVA ZEM (m_save)"), L"The add-in has no export m_save.");
    standin::setEventSink(keepMenuEvent);
    EXPECT_EQ(noteAfter(events, L"Event 37: no effect"), L"Event 37 was sent: m_notify returned 0");
    standin::setEventSink(throwException);
    EXPECT_EQ(noteAfter(events, L"Event 37: no effect"),
              L"Event 37 was sent: m_notify ended with an exception");
    standin::setEventSink(keepMenuEvent);
    standin::saveDialogNext(saved);
    EXPECT_EQ(noteAfter(file, L"Save &As..."),
              L"Saved: " + saved + L".  Event 5 was sent: m_notify returned 0");
    standin::saveDialogNext(installation.path(L"nowhere\\a.mcam"));
    EXPECT_EQ(noteAfter(file, L"Save &As..."),
              L"Save failed: " + installation.path(L"nowhere\\a.mcam") + L" cannot be written.");
    EXPECT_EQ(noteAfter(file, L"&Post NC Programs"), L"No NC program was posted.");
    EXPECT_EQ(noteAfter(view, L"Run a &Backplot (requests wait)"), L"The backplot is running.");
    EXPECT_EQ(noteAfter(view, L"Run a &Backplot (requests wait)"), L"The backplot has ended.");
    EXPECT_EQ(noteAfter(file, L"&New"), L"Started an empty part.");
    EXPECT_FALSE(DoFileOpen(L"C:\\nowhere.mcam", false, false, 1, true, nullptr, nullptr));
    EXPECT_EQ(standin::shownNote(), L"Load failed: C:\\nowhere.mcam");
    EXPECT_TRUE(DoFileOpen(path.c_str(), false, false, 1, true, nullptr, nullptr));
    EXPECT_EQ(standin::shownNote(), L"Opened for the add-in: " + path);
    EXPECT_TRUE(CFile_DoFileSave(path.c_str(), nullptr, false, false));
    EXPECT_EQ(standin::shownNote(), L"Saved for the add-in: " + path);
    standin::setEventSink(nullptr);
}

TEST_F(HostMenu, showsTheScriptCommands)
{
    standin::setScriptHelp(L"call  call an export\nquit  end");
    click(help, L"&Script Commands...");
    const HWND shown = FindWindowW(nullptr, L"Script commands");
    ASSERT_NE(shown, nullptr);
    wchar_t text[200] = L"";
    SendMessageW(GetWindow(shown, GW_CHILD), WM_GETTEXT, 200, reinterpret_cast<LPARAM>(text));
    EXPECT_EQ(std::wstring(text), L"call  call an export\r\nquit  end");
    SendMessageW(shown, WM_CLOSE, 0, 0);
    EXPECT_FALSE(IsWindow(shown));
}

TEST(HostPlace, isRightOfTheCompanionOnTheScreen)
{
    for (const auto& [width, height] : {std::pair{1024, 740}, std::pair{1366, 768},
                                        std::pair{1600, 900}, std::pair{2560, 1400}}) {
        const RECT host = standin::placeMainWindow({10, 20, 10 + width, 20 + height});
        const companion::Area zem = companion::placeWindow({10, 20, width, height});
        EXPECT_EQ(zem.left, 10);
        EXPECT_EQ(host.left, zem.left + zem.width);
        EXPECT_GE(host.right - host.left, 512);
        EXPECT_LE(host.right, 10 + width);
        EXPECT_EQ(host.top, 20);
        EXPECT_LE(host.bottom, 20 + height);
    }
}
