// The script language of the stand-in host, with the shipped add-in.
#include "support/host_program.h"
#include "support/companion_double.h"

#include <gtest/gtest.h>

using namespace testing_support;

namespace {

constexpr UINT saveAsCommand = 41111;
constexpr DWORD done = 0;
constexpr DWORD wrong = 2;
constexpr DWORD timedOut = 3;

class HostScript : public ::testing::Test {
protected:
    // Runs the whole script, keeps the trace lines between m_open and m_close, returns the exit
    // code.
    DWORD run(const std::string& script)
    {
        const HostProgram host(installation, script);
        const std::optional<DWORD> code = host.process().waitForExit();
        keepInnerLines(host.trace());
        return code.value_or(STILL_ACTIVE);
    }
    // Every command but the last one succeeds; the last one is invalid.
    void expectWrong(const std::string& script, const std::wstring& lineNumber = L"1")
    {
        EXPECT_EQ(run(script + "\nnotify 37\nquit\n"), wrong) << script;
        ASSERT_FALSE(lines.empty()) << script;
        EXPECT_EQ(lines.back().rfind(L"ui script error: line " + lineNumber + L": ", 0), 0u)
            << toUtf8(lines.back());
    }
    std::wstring makePart(const std::wstring& name, const std::string& text)
    {
        const std::wstring path = installation.path(name);
        writeBytes(path, text);
        return path;
    }
    std::wstring groupPart()
    {
        return makePart(L"p art.mcam", "mastercam part 1\n\n[group]\nid = 7\n");
    }

    Installation installation{Registry::ofTheUser};
    Lines lines;

private:
    void keepInnerLines(const Lines& trace)
    {
        ASSERT_GE(trace.size(), 3u);
        EXPECT_EQ(trace[0], L"ui m_version(2100) -> 2100");
        EXPECT_EQ(trace[1], L"ui m_open(0) -> 0");
        EXPECT_EQ(trace.back(), L"ui m_close(0) -> 0");
        lines.assign(trace.begin() + 2, trace.end() - 1);
    }
};

Lines shown(const std::wstring& name, const std::wstring& value)
{
    return {L"ui " + name + L" = \"" + value + L"\""};
}

// Starts the program with these arguments and returns its exit code.
DWORD exitCodeOf(const std::wstring& arguments)
{
    const Process host(quoted(programFolder() + L"Mastercam.exe") + L" " + arguments);
    return host.waitForExit().value_or(STILL_ACTIVE);
}

// True if the host's message loop has processed many commands, one after another.
bool sendsManyEvents(const HostProgram& host)
{
    bool sent = true;
    for (int i = 0; sent && i < 20; ++i)
        sent = host.sendEvent(6);
    return sent;
}

HWND messageBox()
{
    return FindWindowW(L"#32770", L"TORVA ZEM");
}

} // namespace

TEST_F(HostScript, quitEndsTheProgramWithZero)
{
    EXPECT_EQ(run("quit\nnotify 37\n"), done);
    EXPECT_EQ(lines, Lines{});
}

TEST_F(HostScript, skipsCommentsAndEmptyLines)
{
    EXPECT_EQ(run("\xEF\xBB\xBF# quit\r\n\r\n   \n#quit\nnotify 37\r\nquit"), done);
    EXPECT_EQ(lines, Lines{L"ui m_notify(37) -> 0"});
}

TEST_F(HostScript, withoutQuitLeavesTheProgramRunning)
{
    const HostProgram host(installation, "notify 37\n");
    ASSERT_TRUE(host.waitForTrace(L"m_notify(37)"));
    EXPECT_TRUE(sendsManyEvents(host));
    PostMessageW(host.window(), WM_CLOSE, 0, 0);
    EXPECT_EQ(host.process().waitForExit(), done);
    EXPECT_EQ(host.trace().back(), L"ui m_close(0) -> 0");
}

TEST_F(HostScript, callsAnExportWithOrWithoutArgument)
{
    EXPECT_EQ(run("call importNC\ncall renameNC\ncall m_version 1105\ncall m_version -1\nquit\n"),
              done);
    EXPECT_EQ(lines, (Lines{L"ui importNC() -> 0", L"ui renameNC() -> 1",
                            L"ui m_version(1105) -> 1105", L"ui m_version(-1) -> 2100"}));
}

TEST_F(HostScript, notifiesTheAddIn)
{
    EXPECT_EQ(run("notify 37\nnotify -5\nquit\n"), done);
    EXPECT_EQ(lines, (Lines{L"ui m_notify(37) -> 0", L"ui m_notify(-5) -> 0"}));
}

TEST_F(HostScript, showsEveryStateAtTheStart)
{
    EXPECT_EQ(run("show geo_filename\nshow db_changed\nshow backplot\nshow main_window_enabled\n"
                  "show nc_prefix\nshow nc_suffix\nshow setup_sheet_files\nquit\n"),
              done);
    EXPECT_EQ(lines, (Lines{LR"(ui geo_filename = "")", LR"(ui db_changed = "false")",
                            LR"(ui backplot = "false")", LR"(ui main_window_enabled = "true")",
                            LR"(ui nc_prefix = "C:\NC\")", LR"(ui nc_suffix = ".NC")",
                            LR"(ui setup_sheet_files = "")"}));
}

TEST_F(HostScript, takesTheRestOfTheLineAsValue)
{
    EXPECT_EQ(run("set title  M\xC3\xBCller  \"\xE4\xB8\xAD\" # \nshow title\n"
                  "set geo_filename C:\\a  b.mcam\nshow geo_filename\n"
                  "set nc_suffix  .n c \nshow nc_suffix\n"
                  "set setup_sheet_files C:\\a b.xml;D:\\c\nshow setup_sheet_files\nquit\n"),
              done);
    EXPECT_EQ(lines, (Lines{L"ui title = \" M\u00FCller  \"\u4E2D\" # \"",
                            LR"(ui geo_filename = "C:\a  b.mcam")", LR"(ui nc_suffix = " .n c ")",
                            LR"(ui setup_sheet_files = "C:\a b.xml;D:\c")"}));
}

TEST_F(HostScript, takesNothingOrOneSpaceAsEmpty)
{
    for (const char* empty : {"", " "}) {
        const std::string value = empty;
        EXPECT_EQ(run("set geo_filename x\nset geo_filename" + value + "\nshow geo_filename\n" +
                      "set nc_prefix" + value + "\nshow nc_prefix\n" + "set title" + value +
                      "\nshow title\nchoose" + value + "\nquit\n"),
                  done);
        EXPECT_EQ(lines, (Lines{LR"(ui geo_filename = "")", LR"(ui nc_prefix = "")",
                                LR"(ui title = "")"}));
    }
}

TEST_F(HostScript, setsFlagsAsTrueAndFalse)
{
    for (const std::wstring name : {L"db_changed", L"backplot", L"main_window_enabled"}) {
        const std::string word = toUtf8(name);
        EXPECT_EQ(run("set " + word + " true\nshow " + word + "\nset " + word + " false\nshow " +
                      word + "\nquit\n"),
                  done);
        EXPECT_EQ(lines, (Lines{shown(name, L"true")[0], shown(name, L"false")[0]}));
    }
}

TEST_F(HostScript, putsAPartWithoutCallingTheAddIn)
{
    const std::wstring part = groupPart();
    EXPECT_EQ(run("part " + toUtf8(part) + "\nshow geo_filename\ncall TestFunction\nquit\n"), done);
    EXPECT_EQ(lines, (Lines{shown(L"geo_filename", part)[0],
                            L"ui OMgetActiveMachineGroup(true) -> *", L"ui TestFunction() -> 1"}));
}

TEST_F(HostScript, makesTheNextCallsFail)
{
    EXPECT_EQ(run("part " + toUtf8(groupPart()) + "\nfail OMgetActiveMachineGroup 2\n" +
                  "call TestFunction\ncall TestFunction\ncall TestFunction\n" +
                  "fail OMgetActiveMachineGroup\ncall TestFunction\ncall TestFunction\nquit\n"),
              done);
    const Lines fails = {L"ui OMgetActiveMachineGroup(true) -> null", L"ui TestFunction() -> 1"};
    const Lines works = {L"ui OMgetActiveMachineGroup(true) -> *", L"ui TestFunction() -> 1"};
    Lines expected;
    for (const Lines* call : {&fails, &fails, &works, &fails, &works})
        expected.insert(expected.end(), call->begin(), call->end());
    EXPECT_EQ(lines, expected);
}

TEST_F(HostScript, makesTheNextCallsRaise)
{
    EXPECT_EQ(run("raise OMgetActiveMachineGroup\ncall TestFunction\ncall TestFunction\nquit\n"),
              done);
    EXPECT_EQ(lines,
              (Lines{L"ui OMgetActiveMachineGroup(true) raised", L"ui TestFunction() -> 1",
                     L"ui OMgetActiveMachineGroup(true) -> null", L"ui TestFunction() -> 1"}));
}

TEST_F(HostScript, endsWithTwoAtAWrongCommand)
{
    for (const char* command : {"jump",
                                "Quit",
                                "call nothing",
                                "call",
                                "call importNC x",
                                "call importNC 1 2",
                                "notify",
                                "notify x",
                                "notify 2147483648",
                                "set nothing 1",
                                "set",
                                "set backplot on",
                                "set db_changed",
                                "show nothing",
                                "show",
                                "show title ",
                                "part C:\\nowhere.mcam",
                                "fail nothing",
                                "fail DoFileOpen x",
                                "fail DoFileOpen -1",
                                "raise nothing",
                                "wait",
                                "wait x",
                                "wait -1"})
        expectWrong(command);
}

TEST_F(HostScript, reportsTheNumberOfTheWrongLine)
{
    expectWrong("# note\n\nnotify 37\njump", L"4");
    EXPECT_EQ(lines[0], L"ui m_notify(37) -> 0");
    EXPECT_EQ(lines.size(), 2u);
}

TEST_F(HostScript, endsWithTwoForAMalformedPart)
{
    expectWrong("part " + toUtf8(makePart(L"bad.mcam", "mastercam part 2\n")));
}

TEST_F(HostScript, waitForEndsWithThreeOnTimeout)
{
    EXPECT_EQ(run("notify 37\nwait-for m_notify(38) 20\nnotify 5\nquit\n"), timedOut);
    EXPECT_EQ(lines, Lines{L"ui m_notify(37) -> 0"});
}

TEST_F(HostScript, waitForFindsEarlierLines)
{
    EXPECT_EQ(run("notify 37\nnotify 52\nwait-for ui m_notify(37) -> 0\nwait-for (52) -> 0 20\n"
                  "quit\n"),
              done);
}

TEST_F(HostScript, waitForSearchesAfterTheLastMatch)
{
    EXPECT_EQ(run("notify 37\nwait-for m_notify(37)\nwait-for m_notify(37) 20\nquit\n"), timedOut);
    EXPECT_EQ(run("notify 37\nnotify 37\nwait-for m_notify(37)\nwait-for m_notify(37) 20\nquit\n"),
              done);
    EXPECT_EQ(run("notify 52\nnotify 37\nwait-for m_notify(37)\nwait-for m_notify(52) 20\nquit\n"),
              timedOut);
}

TEST_F(HostScript, waitRunsTheMessageLoopForThatLong)
{
    const HostProgram host(installation, "notify 37\nwait 600000\nnotify 52\n");
    ASSERT_TRUE(host.waitForTrace(L"m_notify(37)"));
    EXPECT_TRUE(sendsManyEvents(host));
    PostMessageW(host.window(), WM_CLOSE, 0, 0);
    EXPECT_EQ(host.process().waitForExit(), done);
    EXPECT_EQ(count(host.trace(), L"m_notify(52)"), 0u);
}

TEST_F(HostScript, goesOnAfterAWait)
{
    EXPECT_EQ(run("wait 20\nwait 0\nnotify 52\nquit\n"), done);
    EXPECT_EQ(lines, Lines{L"ui m_notify(52) -> 0"});
}

TEST_F(HostScript, saveDialogSavesAndSendsEvent5)
{
    const std::wstring saved = installation.path(L"s a ved.mcam");
    const std::wstring part = groupPart();
    const HostProgram host(installation, "part " + toUtf8(part) + "\nsave-dialog " + toUtf8(saved) +
                                             "\nshow db_changed\nwait-for m_notify(5) 30000\n" +
                                             "show geo_filename\nquit\n");
    ASSERT_TRUE(host.waitForTrace(L"db_changed"));
    PostMessageW(host.window(), WM_COMMAND, saveAsCommand, 0);
    EXPECT_EQ(host.process().waitForExit(), done);
    EXPECT_EQ(readBytes(saved), readBytes(part));
    EXPECT_EQ(count(host.trace(), L"ui m_notify(5) -> 0"), 1u);
    EXPECT_EQ(count(host.trace(), shown(L"geo_filename", saved)[0]), 1u);
}

TEST_F(HostScript, saveDialogWithoutAPathQuitsTheHost)
{
    for (const std::wstring command : {L"save-dialog", L"save-dialog "}) {
        const HostProgram host(installation,
                               toUtf8(command) + "\nshow db_changed\nwait 60000\nnotify 52\n",
                               L"host of " + command + L".");
        ASSERT_TRUE(host.waitForTrace(L"db_changed"));
        PostMessageW(host.window(), WM_COMMAND, saveAsCommand, 0);
        EXPECT_EQ(host.process().waitForExit(), done);
        EXPECT_EQ(host.trace().back(), L"ui m_close(0) -> 0");
        EXPECT_EQ(count(host.trace(), L"m_notify"), 0u);
    }
}

TEST_F(HostScript, answersMessageBoxesWhileItRuns)
{
    const HostProgram host(installation, "wait-for message-box 30000\nnotify 52\n");
    ASSERT_TRUE(host.waitForCommandFile());
    writeRequest(host.commandFile(), openRequest(1, "C:\\nowhere\\a.mcam"));
    ASSERT_TRUE(host.waitForTrace(L"m_notify(52)")); // the script has ended
    ASSERT_TRUE(waitUntil([&] { return readBytes(host.commandFile()) == ""; }));
    writeRequest(host.commandFile(), openRequest(2, "C:\\nowhere\\b.mcam"));
    ASSERT_TRUE(waitUntil([] { return messageBox() != nullptr; }));
    EXPECT_TRUE(sendsManyEvents(host)); // the message box runs its own message loop and stays open
    EXPECT_NE(messageBox(), nullptr);
    EXPECT_EQ(count(host.trace(), L"message-box"), 1u);
    PostMessageW(messageBox(), WM_COMMAND, IDOK, 0);
    EXPECT_TRUE(waitUntil([&] { return count(host.trace(), L"message-box") == 2; }));
}

TEST_F(HostScript, endsWithTwoForABadStart)
{
    const std::wstring script = installation.path(L"s.script");
    writeBytes(script, "notify 37\nquit\n");
    const std::wstring withScript = L" --script " + quoted(script);
    EXPECT_EQ(exitCodeOf(L"--script " + quoted(installation.path(L"nowhere"))), wrong);
    EXPECT_EQ(exitCodeOf(L"--addin C:\\nowhere.dll" + withScript), wrong);
    EXPECT_EQ(exitCodeOf(L"--part C:\\nowhere.mcam" + withScript), wrong);
    EXPECT_EQ(exitCodeOf(L"--trace C:\\nowhere\\trace" + withScript), wrong);
    EXPECT_EQ(exitCodeOf(L"--bogus"), wrong);
    EXPECT_EQ(exitCodeOf(L"--script"), wrong);
    writeBytes(script, "set title \xFF\nquit\n");
    EXPECT_EQ(exitCodeOf(withScript), wrong);
}

TEST_F(HostScript, runsWithoutAnAddInAndWithAPart)
{
    const std::wstring script = installation.path(L"s.script");
    const std::wstring trace = installation.path(L"t race");
    const std::wstring part = groupPart();
    writeBytes(script, "show geo_filename\nquit\n");
    EXPECT_EQ(exitCodeOf(L"--script " + quoted(script) + L" --part " + quoted(part) + L" --trace " +
                         quoted(trace)),
              done);
    EXPECT_EQ(linesOf(fromUtf8(readBytes(trace).value_or(""))), shown(L"geo_filename", part));
    writeBytes(script, "notify 37\nquit\n");
    EXPECT_EQ(exitCodeOf(L"--script " + quoted(script)), wrong);
}

TEST_F(HostScript, isNotNeededForClicking)
{
    const std::wstring trace = installation.path(L"trace");
    const Process host(quoted(programFolder() + L"Mastercam.exe") + L" --part C:\\nowhere" +
                       L" --addin " + quoted(programFolder() + L"torvapdm.dll") + L" --trace " +
                       quoted(trace));
    const auto hostWindow = [] { return FindWindowW(nullptr, L"Mastercam - Mill"); };
    const std::wstring opened = L"ui not a part file: \"C:\\nowhere\"\n"
                                L"ui m_version(2100) -> 2100\nui m_open(0) -> 0\n";
    ASSERT_TRUE(waitUntil([&] { return readBytes(trace) == toUtf8(opened); }));
    ASSERT_NE(hostWindow(), nullptr);
    PostMessageW(hostWindow(), WM_CLOSE, 0, 0);
    EXPECT_EQ(host.waitForExit(), done);
    EXPECT_EQ(readBytes(trace), toUtf8(opened + L"ui m_close(0) -> 0\n"));
}
