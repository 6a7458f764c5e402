// The add-in's commands in the host's process: the menu with mouse and keyboard input, the
// check-out command, the setup sheet and the network traffic.
#include "support/host_program.h"
#include "support/companion_double.h"
#include "support/sockets.h"
#include "support/message_boxes.h"

#include <gtest/gtest.h>

using namespace testing_support;

namespace {

const std::wstring menuLine =
    LR"(ui menu(!"TORVA ZEM", -, "Open TORVA ZEM", "Website", "About", "Tools", "Import NC-Files"))";
const std::wstring sheetLine = L"ui RunSetupSheetOnSelectedOpsWithoutUI(*)";
const std::string scriptedSheet = "set setup_sheet_files C:\\sheet one.xml;C:\\two.xml\n";

class CommandsInHost : public ::testing::Test {
protected:
    Installation installation{Registry::ofTheUser};
};

// The popup menu's rectangle on the screen; empty if none opens before the timeout.
RECT waitForMenu()
{
    HWND menu = nullptr;
    RECT place{};
    waitUntil([&] {
        menu = FindWindowW(L"#32768", nullptr);
        return menu && IsWindowVisible(menu);
    });
    GetWindowRect(menu, &place);
    return place;
}

void clickAt(int x, int y)
{
    SetCursorPos(x, y);
    INPUT inputs[2]{};
    inputs[0].type = inputs[1].type = INPUT_MOUSE;
    inputs[0].mi.dwFlags = MOUSEEVENTF_LEFTDOWN;
    inputs[1].mi.dwFlags = MOUSEEVENTF_LEFTUP;
    SendInput(2, inputs, sizeof *inputs);
}

void press(WORD key)
{
    INPUT inputs[2]{};
    inputs[0].type = inputs[1].type = INPUT_KEYBOARD;
    inputs[0].ki.wVk = inputs[1].ki.wVk = key;
    inputs[1].ki.dwFlags = KEYEVENTF_KEYUP;
    SendInput(2, inputs, sizeof *inputs);
}

} // namespace

TEST_F(CommandsInHost, runTheLastMenuItemOnAClick)
{
    const LineReceiver companion;
    const HostProgram host(installation, scriptedSheet + "call m_main 0\nquit\n");
    const RECT menu = waitForMenu();
    clickAt((menu.left + menu.right) / 2, menu.bottom - 10);
    EXPECT_EQ(companion.nextConnection(), "MCAMXMLIMPORTDATAID=0;C:\\sheet one.xml\n");
    EXPECT_EQ(host.process().waitForExit(), 0u);
    EXPECT_EQ(count(host.trace(), menuLine), 1u);
    EXPECT_EQ(count(host.trace(), sheetLine), 1u);
}

TEST_F(CommandsInHost, doNothingOnEscape)
{
    const HostProgram host(installation, "call m_main 0\nquit\n");
    waitForMenu();
    press(VK_ESCAPE);
    EXPECT_EQ(host.process().waitForExit(), 0u);
    EXPECT_EQ(host.trace(), (Lines{L"ui m_version(2100) -> 2100", L"ui m_open(0) -> 0", menuLine,
                                   L"ui m_main(0) -> 0", L"ui m_close(0) -> 0"}));
}

TEST_F(CommandsInHost, doNothingOnAClickOnTheTitle)
{
    const HostProgram host(installation, "call m_main 0\nquit\n");
    const RECT menu = waitForMenu();
    clickAt((menu.left + menu.right) / 2, menu.top + 10);
    press(VK_ESCAPE); // clicking a title leaves the menu open
    EXPECT_EQ(host.process().waitForExit(), 0u);
    EXPECT_EQ(count(host.trace(), L"message-box"), 0u);
    EXPECT_EQ(count(host.trace(), L"ui m_main(0) -> 0"), 1u);
}

TEST_F(CommandsInHost, listTheFilesThatWereOpened)
{
    const HostProgram host(installation,
                           "wait-for message-box 30000\nchoose \ncall m_main\nquit\n");
    ASSERT_TRUE(host.waitForCommandFile());
    ASSERT_TRUE(waitUntil([&] { return readBytes(host.commandFile()) == ""; }));
    ASSERT_TRUE(writeRequest(host.commandFile(), openRequest(5, "C:\\nowhere\\a.mcam")));
    EXPECT_EQ(host.process().waitForExit(), 0u);
    EXPECT_EQ(count(host.trace(), LR"("Import NC-Files", -, "C:\nowhere\a.mcam"))"), 1u);
}

TEST_F(CommandsInHost, startTheCompanionsAboutBox)
{
    recordCompanionStarts(installation);
    const HostProgram host(installation, "choose About\ncall m_main 0\ncall m_about 0\nwait 1\n");
    const Lines lines = companionStarts(installation, 2);
    ASSERT_EQ(lines.size(), 2u);
    const auto window = static_cast<UINT32>(reinterpret_cast<UINT_PTR>(host.window()));
    for (const std::wstring& line : lines)
        EXPECT_EQ(line, L"0 --about --parentwindow " + std::to_wstring(window));
}

TEST_F(CommandsInHost, askTheCompanionForAFile)
{
    recordCompanionStarts(installation);
    const HostProgram host(installation, "call m_load 0\nquit\n");
    const Lines lines = companionStarts(installation, 2);
    ASSERT_EQ(lines.size(), 2u);
    const std::wstring& request = lines[0] == L"1" ? lines[1] : lines[0];
    EXPECT_EQ(request.rfind(L"0 --checkout \"", 0), 0u);
    EXPECT_NE(request.find(L"\\\\TORVA ZEM-"), request.npos);
    EXPECT_EQ(host.process().waitForExit(), 0u);
    EXPECT_EQ(count(host.trace(), L"ui m_load(0) -> 0"), 1u);
    EXPECT_EQ(count(host.trace(), L"message-box"), 0u);
}

TEST_F(CommandsInHost, reportAMissingCompanion)
{
    const HostProgram host(installation, "call m_about 0\ncall m_load 0\nquit\n");
    EXPECT_EQ(host.process().waitForExit(), 0u);
    EXPECT_EQ(count(host.trace(), LR"(ui message-box("TORVA ZEM", "TORVA ZEM is not installed."))"),
              1u);
    EXPECT_EQ(count(host.trace(), notStarted), 1u);
}

TEST_F(CommandsInHost, sendTheRequestsSetupSheet)
{
    const LineReceiver companion;
    const HostProgram host(installation,
                           scriptedSheet + "wait-for OnFileNew 30000\ncall m_tools 0\nquit\n");
    ASSERT_TRUE(host.waitForCommandFile());
    ASSERT_TRUE(writeRequest(host.commandFile(), openRequest(42, "")));
    EXPECT_EQ(companion.nextConnection(), "MCAMXMLIMPORTDATAID=42;C:\\sheet one.xml\n");
    EXPECT_EQ(host.process().waitForExit(), 0u);
}

TEST_F(CommandsInHost, sendNothingWithoutASetupSheet)
{
    const LineReceiver companion;
    const HostProgram host(installation, "set setup_sheet_files \ncall m_tools 0\nquit\n");
    EXPECT_EQ(host.process().waitForExit(), 0u);
    EXPECT_TRUE(companion.isIdle());
    EXPECT_EQ(count(host.trace(), sheetLine + L" -> true"), 1u);
}

TEST_F(CommandsInHost, swallowExceptionsOnlyInTools)
{
    const HostProgram host(installation, "raise RunSetupSheetOnSelectedOpsWithoutUI\n"
                                         "call m_tools 0\n"
                                         "raise RunSetupSheetOnSelectedOpsWithoutUI\n"
                                         "choose Tools\ncall m_main 0\nquit\n");
    EXPECT_EQ(host.process().waitForExit(), 0u);
    EXPECT_EQ(count(host.trace(), L"ui m_tools(0) -> 0"), 1u);
    EXPECT_EQ(count(host.trace(), L"ui m_main(0) raised"), 1u);
}

TEST_F(CommandsInHost, returnWhenNobodyListens)
{
    const HostProgram host(installation, scriptedSheet + "call m_tools 0\nquit\n");
    EXPECT_EQ(host.process().waitForExit(), 0u);
    EXPECT_EQ(count(host.trace(), L"ui m_tools(0) -> 0"), 1u);
    EXPECT_EQ(count(host.trace(), L"message-box"), 0u);
}

TEST_F(CommandsInHost, leaveTheGreetingPortClosed)
{
    const LineReceiver startsTheSocketsLibrary;
    const HostProgram host(installation, "");
    ASSERT_TRUE(host.waitForCommandFile());
    EXPECT_EQ(connectTo(20248), WSAECONNREFUSED);
}
