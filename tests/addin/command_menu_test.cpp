#include "addin/command_menu.h"

#include "addin/exports.h"
#include "framework/framework.h"
#include "companion/identifiers.h"
#include "host/message_box.h"
#include "support/add_in_state.h"
#include "support/companion_double.h"
#include "support/host_fixture.h"
#include "support/sockets.h"
#include "support/system_calls.h"
#include "support/message_boxes.h"
#include "host/document.h"
#include "host/host.h"

#include <shellapi.h>
#include <stdexcept>

using namespace torvapdm;
using namespace testing_support;

namespace {

const std::wstring rows = LR"(!"TORVA ZEM", -, "Open TORVA ZEM", "Website", "About", "Tools", )"
                          LR"("Import NC-Files")";

// One row of the real popup menu.
struct Row {
    UINT id;
    bool isDefault;

    bool operator==(const Row&) const = default;
};

// The content of the open menu, read while it is on the screen.
std::vector<Row> openRows;
UINT titleState = 0;
POINT openAt;

BOOL CALLBACK readIfMenu(HWND window, LPARAM)
{
    wchar_t name[16];
    GetClassNameW(window, name, 16);
    if (lstrcmpW(name, L"#32768") != 0 || !IsWindowVisible(window))
        return TRUE;
    constexpr UINT getMenuHandle = 0x01E1;
    const auto menu = reinterpret_cast<HMENU>(SendMessageW(window, getMenuHandle, 0, 0));
    const int standard = static_cast<int>(GetMenuDefaultItem(menu, TRUE, GMDI_USEDISABLED));
    titleState = GetMenuState(menu, 0, MF_BYPOSITION);
    for (int i = 0; i < GetMenuItemCount(menu); ++i)
        openRows.push_back({GetMenuItemID(menu, i), i == standard});
    RECT place{};
    GetWindowRect(window, &place);
    openAt = {place.left, place.top};
    EndMenu();
    return FALSE;
}

void CALLBACK readAndDismiss(HWND, UINT, UINT_PTR, DWORD)
{
    if (openRows.empty())
        EnumThreadWindows(GetCurrentThreadId(), readIfMenu, 0);
}

// The id returned by the next popup menu.
UINT chosenId = 0;

// The menu and what follows it, in order.
Lines steps;
BOOL WINAPI choosingPopupMenu(HMENU, UINT flags, int, int, int reserved, HWND owner,
                              const RECT* area)
{
    steps.push_back(L"show " + std::to_wstring(flags) + L' ' + std::to_wstring(reserved) +
                    (owner == getMainFrameWindow() && !area ? L"" : L" elsewhere"));
    return static_cast<BOOL>(chosenId);
}

BOOL WINAPI notedDestroyMenu(HMENU menu)
{
    steps.push_back(L"destroy");
    return systems(&DestroyMenu, "DestroyMenu", L"user32.dll")(menu);
}

BOOL WINAPI notedOpen(SHELLEXECUTEINFOW* open)
{
    steps.push_back(std::wstring(open->lpVerb) + L' ' + open->lpFile +
                    (open->lpParameters ? std::wstring(L" ") + open->lpParameters : L""));
    return FALSE;
}

CFrameWnd farWindow;

CFrameWnd* farMainFrame()
{
    farWindow.m_hWnd = reinterpret_cast<HWND>(UINT_PTR{0x7F00000F0});
    return &farWindow;
}

bool throwingSheet(CStringArray&)
{
    throw std::runtime_error("other");
}

// Registers the program as this process's handler for https addresses.
void openWebAddressesWith(const std::wstring& program)
{
    const std::wstring command = L"\"" + program + L"\" %1";
    const DWORD size = static_cast<DWORD>((command.size() + 1) * sizeof(wchar_t));
    HKEY classes = nullptr;
    HKEY open = nullptr;
    RegCreateKeyExW(HKEY_CURRENT_USER, L"classes", 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &classes,
                    nullptr);
    RegCreateKeyExW(classes, L"https\\shell\\open\\command", 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                    &open, nullptr);
    RegSetValueExW(open, nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(command.c_str()), size);
    RegCloseKey(open);
    RegOverridePredefKey(HKEY_CLASSES_ROOT, classes);
    RegCloseKey(classes);
}

class CommandMenu : public HostFixture {
protected:
    // Opens the real menu, reads its rows and dismisses it.
    std::vector<Row> readRealMenu()
    {
        openRows.clear();
        const UINT_PTR timer = SetTimer(nullptr, 0, 20, readAndDismiss);
        EXPECT_EQ(m_main(0), 0);
        KillTimer(nullptr, timer);
        return openRows;
    }
    void choose(const wchar_t* item)
    {
        standin::chooseNext(item);
        EXPECT_EQ(m_main(0), 0);
    }
    static std::wstring menu(const std::wstring& content) { return L"ui menu(" + content + L")"; }

    static std::wstring aboutStart(HWND window)
    {
        const auto number = static_cast<UINT32>(reinterpret_cast<UINT_PTR>(window));
        return L"0 --about --parentwindow " + std::to_wstring(number);
    }
};

const std::wstring notInstalled = LR"(ui message-box("TORVA ZEM", "TORVA ZEM is not installed."))";

} // namespace

TEST_F(CommandMenu, hasSevenRowsWithoutRecentFiles)
{
    choose(L"");
    EXPECT_EQ(newTrace(), Lines{menu(rows)});
}

TEST_F(CommandMenu, listsTheRecentFilesInTheirOrder)
{
    AddInState::setRecentFiles(
        {{3, L"C:\\three.mcam"}, {2, L"C:\\two & more.mcam"}, {1, L"C:\\one.mcam"}});
    choose(L"");
    EXPECT_EQ(newTrace(),
              Lines{menu(rows + LR"(, -, "C:\three.mcam", "C:\two & more.mcam", "C:\one.mcam")")});
}

TEST_F(CommandMenu, numbersItsItemsWithADefault)
{
    AddInState::setRecentFiles(
        {{3, L"C:\\three.mcam"}, {2, L"C:\\two.mcam"}, {1, L"C:\\one.mcam"}});
    EXPECT_EQ(readRealMenu(), (std::vector<Row>{{0xF0AD4F01, true},
                                                {0, false},
                                                {0xF0AD4F02, false},
                                                {0xF0AD4F03, false},
                                                {0xF0AD4F04, false},
                                                {0xF0AD4F05, false},
                                                {0xF0AD4F05, false},
                                                {0, false},
                                                {0xF0AD4F06, false},
                                                {0xF0AD4F07, false},
                                                {0xF0AD4F08, false}}));
    EXPECT_EQ(titleState & (MF_DISABLED | MF_GRAYED), UINT{MF_DISABLED}); // not grey
}

TEST_F(CommandMenu, opensAtTheMouse)
{
    SetCursorPos(300, 200);
    POINT mouse{};
    GetCursorPos(&mouse);
    readRealMenu();
    EXPECT_EQ(openAt.x, mouse.x);
    EXPECT_EQ(openAt.y, mouse.y);
}

TEST_F(CommandMenu, doesNothingWhenDismissed)
{
    readRealMenu();
    EXPECT_EQ(newTrace(), Lines{menu(rows)});
}

TEST_F(CommandMenu, doesNothingForARecentFile)
{
    AddInState::setRecentFiles({{1, L"C:\\one.mcam"}});
    choose(L"C:\\one.mcam");
    EXPECT_EQ(newTrace(), Lines{menu(rows + LR"(, -, "C:\one.mcam")")});
}

TEST_F(CommandMenu, ignoresNumbersWithoutACommand)
{
    recordCompanionStarts(installation);
    // Replaces the stand-in host's TrackPopupMenu, which does not allow choosing a title.
    standin::redirectImports(GetModuleHandleW(nullptr), &TrackPopupMenu, &choosingPopupMenu);
    for (const UINT id : {0xF0AD4F01u, 0xF0AD4F00u, 0xF0AD4F06u, 0xF0AD4F1Au, 1u, 0xFFFFFFFFu}) {
        chosenId = id;
        EXPECT_EQ(m_main(0), 0);
        EXPECT_EQ(newTrace(), Lines{}) << id;
    }
    chosenId = 0xF0AD4F04; // a valid command, to check that the ids reach the add-in
    EXPECT_EQ(m_main(0), 0);
    EXPECT_EQ(companionStarts(installation, 1), Lines{aboutStart(getMainFrameWindow())});
}

TEST_F(CommandMenu, isGoneWhenItsCommandRuns)
{
    standin::redirectImports(GetModuleHandleW(nullptr), &TrackPopupMenu, &choosingPopupMenu);
    redirectCalls(&DestroyMenu, "DestroyMenu", &notedDestroyMenu, L"user32.dll");
    redirectCalls(&ShellExecuteExW, "ShellExecuteExW", &notedOpen, L"shell32.dll");
    chosenId = 0xF0AD4F03;
    EXPECT_EQ(m_main(7), 0);
    EXPECT_EQ(steps, (Lines{L"show 384 0", L"destroy", L"open " + namespaceBase}));
}

TEST_F(CommandMenu, passesTheLowHalfOfTheWindow)
{
    recordCompanionStarts(installation);
    standin::redirectImports(GetModuleHandleW(nullptr), &get_MainFrame, &farMainFrame);
    redirectCalls(&ShellExecuteExW, "ShellExecuteExW", &notedOpen, L"shell32.dll");
    showAbout();
    EXPECT_EQ(steps, (Lines{L"open " + installation.path(L"TORVA-ZEM.exe") +
                            L" --about --parentwindow 4026532080"})); // 0xF00000F0
}

TEST_F(CommandMenu, opensTheCompanion)
{
    choose(L"Open TORVA ZEM"); // not installed
    EXPECT_EQ(newTrace()[1], notStarted);
}

TEST_F(CommandMenu, opensTheVendorsWebSite)
{
    recordCompanionStarts(installation);
    openWebAddressesWith(installation.path(L"TORVA-ZEM.exe"));
    choose(L"Website");
    const Lines lines = companionStarts(installation, 1);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_NE(lines[0].find(namespaceBase), std::wstring::npos) << lines[0];
    EXPECT_EQ(newTrace(), Lines{menu(rows)});
}

TEST_F(CommandMenu, startsAboutOverTheMainWindow)
{
    recordCompanionStarts(installation);
    choose(L"About");
    EXPECT_EQ(companionStarts(installation, 1), Lines{aboutStart(getMainFrameWindow())});
    EXPECT_EQ(m_about(0), 0);
    EXPECT_EQ(companionStarts(installation, 2),
              (Lines{aboutStart(getMainFrameWindow()), aboutStart(getMainFrameWindow())}));
}

TEST_F(CommandMenu, startsAboutWithoutAMainWindow)
{
    recordCompanionStarts(installation);
    standin::failNext("get_MainFrame");
    EXPECT_EQ(m_about(0), 0);
    EXPECT_EQ(companionStarts(installation, 1), Lines{L"0 --about --parentwindow 0"});
}

TEST_F(CommandMenu, reportsAMissingCompanionForAbout)
{
    EXPECT_EQ(m_about(0), 0);
    EXPECT_EQ(newTrace(), Lines{notInstalled});
}

TEST_F(CommandMenu, sendsTheSetupSheetFromBothItems)
{
    const LineReceiver companion;
    standin::setState("setup_sheet_files", L"C:\\sheet.xml");
    for (const wchar_t* item : {L"Tools", L"Import NC-Files"}) {
        choose(item);
        EXPECT_EQ(companion.nextConnection(), "MCAMXMLIMPORTDATAID=0;C:\\sheet.xml\n") << item;
        EXPECT_EQ(newTrace(),
                  (Lines{menu(rows), L"ui RunSetupSheetOnSelectedOpsWithoutUI(*) -> true"}));
    }
}

TEST_F(CommandMenu, passesOnASetupSheetsException)
{
    standin::raiseNext("RunSetupSheetOnSelectedOpsWithoutUI");
    standin::chooseNext(L"Tools");
    CException* raised = nullptr;
    try {
        m_main(0);
    } catch (CException* exception) {
        raised = exception;
    }
    ASSERT_NE(raised, nullptr);
    raised->Delete();
}

TEST_F(CommandMenu, passesOnNoOtherException)
{
    standin::redirectImports(GetModuleHandleW(nullptr), &RunSetupSheetOnSelectedOpsWithoutUI,
                             &throwingSheet);
    choose(L"Tools");
    EXPECT_EQ(newTrace(), Lines{menu(rows)});
}
