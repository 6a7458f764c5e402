// The shipped add-in in the host's process; the test acts as the Companion.
#include "support/host_program.h"
#include "support/companion_double.h"
#include "support/counts.h"
#include "support/message_boxes.h"

#include <gtest/gtest.h>

using namespace testing_support;
using namespace std::string_literals;

namespace {

class AddInInHost : public ::testing::Test {
protected:
    std::wstring makePart(const std::wstring& name)
    {
        const std::wstring path = installation.path(name);
        writeBytes(path, "");
        return path;
    }
    std::string request(int id, const std::wstring& path) { return openRequest(id, toUtf8(path)); }
    // Writes as soon as the last request has been read.
    static bool send(const HostProgram& host, std::string_view bytes)
    {
        return waitUntil([&] { return readBytes(host.commandFile()) == ""; }) &&
               writeRequest(host.commandFile(), bytes);
    }
    static bool isEmptied(const HostProgram& host)
    {
        return waitUntil([&] { return readBytes(host.commandFile()) == ""; });
    }
    // Sends the request. True once it is pending and the host has processed the message for it: by
    // then the listener has read the next request too.
    static bool park(const HostProgram& host, std::string_view bytes)
    {
        return send(host, bytes) && send(host, openRequest(18, "")) &&
               host.waitForTrace(L"OnFileNew") && host.sendEvent(37);
    }

    Installation installation{Registry::ofTheUser};
};

constexpr unsigned modalDialogCommand = 41104;
constexpr unsigned backplotCommand = 41106;

const Lines newFileCalls = {L"other set_db_unchanged()",
                            LR"(other post_FT_command("Mastercam", "OnFileNew"))"};

// The host's own modal dialog, or null.
HWND modalDialog()
{
    return FindWindowW(L"#32770", L"Mastercam");
}

} // namespace

TEST_F(AddInInHost, isOpenedAndClosedByTheHost)
{
    const HostProgram host(installation, "quit\n");
    EXPECT_EQ(host.process().waitForExit(), 0u);
    EXPECT_EQ(host.trace(),
              (Lines{L"ui m_version(2100) -> 2100", L"ui m_open(0) -> 0", L"ui m_close(0) -> 0"}));
    EXPECT_FALSE(readBytes(host.commandFile()).has_value());
}

TEST_F(AddInInHost, marksTheHostsWindow)
{
    const HostProgram host(installation, "");
    EXPECT_TRUE(waitUntil([&] { return host.window() != nullptr; }));
}

TEST_F(AddInInHost, opensAndSavesARequestedPart)
{
    const std::wstring part = makePart(L"bracket 7.emcam");
    writeBytes(installation.path(L"temp\\mcsettings-17.txt"), "17|3|0|C:\\M\\Mill.mcam-mmd\r\n");
    const HostProgram host(installation, "set title Mastercam  OLD\n"
                                         "wait-for CFile_DoFileSave 30000\n"
                                         "wait-for set_db_unchanged\n"
                                         "show title\nshow geo_filename\nshow db_changed\nquit\n");
    ASSERT_TRUE(host.waitForCommandFile());
    ASSERT_TRUE(send(host, request(17, part)));
    ASSERT_EQ(host.process().waitForExit(), 0u);
    std::wstring raised = part.substr(0, part.size() - 5) + L"mcam";
    const std::wstring named = raised;
    CharUpperBuffW(raised.data(), static_cast<DWORD>(raised.size()));
    EXPECT_EQ(
        host.trace(),
        (Lines{L"ui m_version(2100) -> 2100", L"ui m_open(0) -> 0",
               L"ui DoFileOpen(\"" + part + L"\", false, false, 1, true, *, null) -> true",
               LR"(ui SetActiveMachine("C:\M\Mill.mcam-mmd") -> true)", L"ui set_db_unchanged()",
               L"ui CMastercamInterface.position1(\"" + part + L"\")",
               L"ui CMastercamView.position0()", L"ui CMastercamInterface.position3()",
               L"ui CFile_DoFileSave(\"" + part + L"\", main, false, false) -> true",
               L"ui set_db_unchanged()", L"ui title = \"Mastercam  " + raised + L"\"",
               L"ui geo_filename = \"" + named + L"\"", L"ui db_changed = \"false\"",
               L"ui m_close(0) -> 0"}));
    EXPECT_FALSE(readBytes(installation.path(L"temp\\mcsettings-17.txt")).has_value());
    const std::string log = readBytes(installation.path(L"sys\\mcxlog.txt")).value_or("");
    for (const char number : "1234567"s)
        EXPECT_NE(log.find("Loading File #"s + number + ": " + toUtf8(part) + "\r\n"), log.npos);
}

TEST_F(AddInInHost, startsANewFileOffTheUiThread)
{
    const HostProgram host(installation, "wait-for OnFileNew 30000\nquit\n");
    ASSERT_TRUE(host.waitForCommandFile());
    ASSERT_TRUE(send(host, openRequest(7, "")));
    EXPECT_EQ(host.process().waitForExit(), 0u);
    EXPECT_EQ(fromOtherThreads(host.trace()), newFileCalls);
}

TEST_F(AddInInHost, closesThePartOnACheckIn)
{
    const std::wstring part = makePart(L"part.mcam");
    const HostProgram host(installation, "wait-for CFile_DoFileSave 30000\n"
                                         "wait-for OnFileNew 30000\n"
                                         "show geo_filename\nnotify 5\nquit\n");
    ASSERT_TRUE(host.waitForCommandFile());
    ASSERT_TRUE(send(host, request(17, part)));
    ASSERT_TRUE(host.waitForTrace(L"CFile_DoFileSave"));
    ASSERT_TRUE(send(host, "CHECKIN part.mcam"));
    EXPECT_EQ(host.process().waitForExit(), 0u);
    Lines expected = {L"other m_fclose(null, 0, null)"};
    expected.insert(expected.end(), newFileCalls.begin(), newFileCalls.end());
    EXPECT_EQ(fromOtherThreads(host.trace()), expected);
    EXPECT_EQ(count(host.trace(), L"geo_filename = \"\""), 1u);
    // The file is still known, so event 5 saves.
    EXPECT_EQ(count(host.trace(), L"main, false, true)"), 1u);
}

TEST_F(AddInInHost, keepsARequestDuringAModalDialog)
{
    const std::wstring part = makePart(L"part.mcam");
    const HostProgram host(installation, "");
    host.command(modalDialogCommand);
    ASSERT_TRUE(waitUntil([&] { return modalDialog() && !IsWindowEnabled(host.window()); }));
    ASSERT_TRUE(park(host, request(17, part)));
    EXPECT_NE(modalDialog(), nullptr);
    EXPECT_EQ(count(host.trace(), L"DoFileOpen"), 0u);
    PostMessageW(modalDialog(), WM_COMMAND, IDOK, 0);
    EXPECT_TRUE(host.waitForTrace(L"DoFileOpen(\"" + part));
}

TEST_F(AddInInHost, keepsARequestDuringABackplot)
{
    const std::wstring part = makePart(L"part.mcam");
    const HostProgram host(installation, "set backplot true\nshow backplot\n");
    ASSERT_TRUE(host.waitForTrace(LR"(ui backplot = "true")"));
    ASSERT_TRUE(park(host, request(17, part)));
    EXPECT_EQ(count(host.trace(), L"DoFileOpen"), 0u);
    host.command(backplotCommand); // off again
    EXPECT_TRUE(host.waitForTrace(L"DoFileOpen(\"" + part));
}

TEST_F(AddInInHost, servesARequestAfterAMalformedOne)
{
    const std::wstring part = makePart(L"part.mcam");
    const HostProgram host(installation, "");
    ASSERT_TRUE(host.waitForCommandFile());
    const std::string malformed[] = {"nospace",
                                     "a",
                                     "\xEF\xBB\xBF"
                                     "x C:\\a\n",
                                     "\xEF\xBB\xBF"
                                     "99999999999 C:\\a\n",
                                     "\x80\x81\xFF",
                                     std::string(5, '\0'),
                                     std::string(65536, 'x')};
    for (const std::string& text : malformed) {
        ASSERT_TRUE(send(host, text));
        ASSERT_TRUE(isEmptied(host));
    }
    ASSERT_TRUE(send(host, request(17, part)));
    EXPECT_TRUE(host.waitForTrace(L"CFile_DoFileSave"));
    EXPECT_EQ(fromOtherThreads(host.trace()), Lines{});
}

TEST_F(AddInInHost, survivesAnOversizedRequest)
{
    const HostProgram host(installation, "");
    ASSERT_TRUE(waitUntil([&] { return host.window() != nullptr; })); // the listener is running
    const std::string oversized(65537, 'x');
    ASSERT_TRUE(send(host, oversized));
    // The listener was the only thread in addition to the host's.
    ASSERT_TRUE(waitUntil([&] { return countThreads(host.process().id()) == 1; }));
    EXPECT_EQ(readBytes(host.commandFile()), oversized);
    EXPECT_TRUE(host.sendEvent(37));
    PostMessageW(host.window(), WM_CLOSE, 0, 0);
    EXPECT_EQ(host.process().waitForExit(), 0u);
    EXPECT_EQ(count(host.trace(), L"m_close(0) -> 0"), 1u);
    EXPECT_FALSE(readBytes(host.commandFile()).has_value());
}

TEST_F(AddInInHost, reportsAMissingFile)
{
    const HostProgram host(installation, "wait-for message-box 30000\nquit\n");
    ASSERT_TRUE(host.waitForCommandFile());
    ASSERT_TRUE(send(host, openRequest(17, "C:\\nowhere\\a.mcam")));
    EXPECT_EQ(host.process().waitForExit(), 0u);
    EXPECT_EQ(count(host.trace(), LR"(ui message-box("TORVA ZEM", "The file does not exist."))"),
              1u);
}

TEST_F(AddInInHost, reportsAFileTheHostCannotOpen)
{
    const std::wstring part = makePart(L"part.mcam");
    const HostProgram host(installation, "raise DoFileOpen\nwait-for message-box 30000\nquit\n");
    ASSERT_TRUE(host.waitForCommandFile());
    ASSERT_TRUE(send(host, request(17, part)));
    EXPECT_EQ(host.process().waitForExit(), 0u);
    EXPECT_EQ(count(host.trace(), loadFailed), 1u);
}

TEST_F(AddInInHost, waitsForATemporaryFolder)
{
    removeFolder(installation.path(L"temp"));
    const HostProgram host(installation, "wait-for OnFileNew 30000\nquit\n");
    ASSERT_TRUE(host.waitForTrace(L"ui m_open(0) -> 0"));
    CreateDirectoryW(installation.path(L"temp").c_str(), nullptr);
    ASSERT_TRUE(host.waitForCommandFile()); // the listener kept retrying
    ASSERT_TRUE(send(host, openRequest(7, "")));
    EXPECT_EQ(host.process().waitForExit(), 0u);
    Lines expected = {L"ui m_version(2100) -> 2100", L"ui m_open(0) -> 0"};
    expected.insert(expected.end(), newFileCalls.begin(), newFileCalls.end());
    expected.push_back(L"ui m_close(0) -> 0");
    EXPECT_EQ(host.trace(), expected);
}

TEST_F(AddInInHost, answersEveryExportOfThisRelease)
{
    const HostProgram host(installation, "call importNC\ncall renameNC\ncall TestFunction\n"
                                         "notify 37\ncall m_version 1105\nquit\n");
    EXPECT_EQ(host.process().waitForExit(), 0u);
    const Lines trace = host.trace();
    for (const wchar_t* line :
         {L"ui importNC() -> 0", L"ui renameNC() -> 1", L"ui OMgetActiveMachineGroup(true) -> null",
          L"ui TestFunction() -> 1", L"ui m_notify(37) -> 0", L"ui m_version(1105) -> 1105"})
        EXPECT_EQ(count(trace, line), 1u) << line;
}

TEST_F(AddInInHost, servesTwoHostsThroughTwoFiles)
{
    const std::wstring first = makePart(L"first.mcam");
    const std::wstring second = makePart(L"second.mcam");
    const HostProgram one(installation, "", L"one");
    const HostProgram two(installation, "", L"two");
    ASSERT_TRUE(one.waitForCommandFile() && two.waitForCommandFile());
    ASSERT_TRUE(send(one, request(1, first)) && send(two, request(2, second)));
    EXPECT_TRUE(one.waitForTrace(L"CFile_DoFileSave(\"" + first));
    EXPECT_TRUE(two.waitForTrace(L"CFile_DoFileSave(\"" + second));
}

TEST_F(AddInInHost, losesItsCommandFileWithItsProcess)
{
    HostProgram host(installation, "wait-for go 30000\n");
    ASSERT_TRUE(host.waitForCommandFile());
    const std::wstring file = host.commandFile();
    Process(L"taskkill /f /pid " + std::to_wstring(host.process().id())).waitForExit();
    EXPECT_TRUE(waitUntil([&] { return !readBytes(file).has_value(); }));
}
