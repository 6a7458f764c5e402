// The receiving end of the notice protocol in the stand-in Companion: the test sends bytes as a
// client and checks the Companion's log and windows.
#include "support/companion_program.h"
#include "support/sockets.h"
#include "support/windows.h"

#include <gtest/gtest.h>

#include <memory>
#include <thread>

#include <winsock2.h>

using namespace testing_support;

namespace {

// Makes a socket listen on the Companion's port; true on success.
class BoundSocket {
public:
    BoundSocket() { isBound_ = tryToBind(); }
    ~BoundSocket() { closesocket(socket_); }
    BoundSocket(const BoundSocket&) = delete;
    BoundSocket& operator=(const BoundSocket&) = delete;

    bool isBound() const { return isBound_; }
    // Retries, because the sockets of a program that has just ended may stay open briefly.
    bool waitUntilBound()
    {
        return waitUntil([this] { return isBound_ || (isBound_ = tryToBind()); });
    }

private:
    bool tryToBind()
    {
        closesocket(socket_);
        socket_ = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
        const BOOL reuses = TRUE;
        setsockopt(socket_, SOL_SOCKET, SO_REUSEADDR, reinterpret_cast<const char*>(&reuses),
                   sizeof reuses);
        const sockaddr_in address = companionsAddress();
        return bind(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 &&
               listen(socket_, 1) == 0;
    }

    SOCKET socket_ = INVALID_SOCKET;
    bool isBound_ = false;
};

std::wstring shownText(HWND window)
{
    HWND edit = FindWindowExW(window, nullptr, L"EDIT", nullptr);
    wchar_t text[256] = L"";
    SendMessageW(edit, WM_GETTEXT, std::size(text), reinterpret_cast<LPARAM>(text));
    return IsWindowVisible(edit) ? text : L"not shown";
}

constexpr char twoOperations[] =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<setupSheet file=\"C:\\work\\bracket.mcam\" title=\"Bracket\" machine=\"C:\\M\\Mill.mmd\">\n"
    "  <operations count=\"2\" seconds=\"90\">\n"
    "    <operation id=\"1\" type=\"2\" group=\"Top\" depth=\"-3\" ncFile=\"A\" seconds=\"60\">\n"
    "      <tool number=\"4\" diameter=\"10\" cornerRadius=\"0\" feed=\"900\" comment=\"Mill\"/>\n"
    "    </operation>\n"
    "    <operation id=\"2\" type=\"3\" group=\"Top\" depth=\"-9\" ncFile=\"A\" seconds=\"30\">\n"
    "      <tool number=\"4\" diameter=\"10\" cornerRadius=\"0\" feed=\"900\" comment=\"Mill\"/>\n"
    "    </operation>\n"
    "  </operations>\n"
    "</setupSheet>\n";

class CompanionLines : public ::testing::Test {
protected:
    CompanionLines() { installCompanionWithLibrary(installation); }

    // The log lines after those of the start, once there are at least this many.
    static Lines logOfLines(const CompanionProgram& companion, size_t size)
    {
        constexpr size_t linesOfStart = 2;
        waitUntil([&] { return companion.log().size() >= linesOfStart + size; });
        Lines log = companion.log();
        log.erase(log.begin(), log.begin() + linesOfStart);
        return log;
    }

    // Writes a file and sends a notice that it is the setup sheet of this request.
    std::wstring announceSheet(int id, const std::wstring& name, const std::string& bytes) const
    {
        const std::wstring file = installation.path(L"temp\\" + name);
        writeBytes(file, bytes);
        EXPECT_TRUE(sendToCompanion("MCAMXMLIMPORTDATAID=" + std::to_string(id) + ";" +
                                    toUtf8(file) + "\n"));
        return file;
    }

    Sockets sockets;
    Installation installation{Registry::ofTheUser};
};

} // namespace

TEST_F(CompanionLines, areLoggedByteByByteWithMeaning)
{
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    ASSERT_TRUE(sendToCompanion("TOOL-7\n"));
    ASSERT_TRUE(sendToCompanion("ZEMID=4294967295|C:\\a.mcam\n"));
    ASSERT_TRUE(sendToCompanion("IMPORTNCQUEUE|C:\\q\n"));
    EXPECT_EQ(
        logOfLines(companion, 8),
        (Lines{LR"(line bytes=7 hex=544F4F4C2D370A text="TOOL-7")", L"tool-data id=7",
               L"tool-data-unreadable file=\"" + installation.path(L"temp\\tool-7.txt") + L"\"",
               LR"(line bytes=27 hex=5A454D49443D343239343936373239357C433A5C612E6D63616D0A)"
               LR"( text="ZEMID=4294967295|C:\a.mcam")",
               LR"(commit-notice id=4294967295 file="C:\a.mcam")",
               LR"(line bytes=19 hex=494D504F52544E4351554555457C433A5C710A)"
               LR"( text="IMPORTNCQUEUE|C:\q")",
               LR"(nc-queue file="C:\q")", LR"(nc-queue-unreadable file="C:\q")"}));
}

TEST_F(CompanionLines, areLoggedEvenWithoutMeaning)
{
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    ASSERT_TRUE(sendToCompanion(""));
    ASSERT_TRUE(sendToCompanion(std::string("a\tb\0\r\n\n", 7)));
    ASSERT_TRUE(sendToCompanion("TOOL-7"));
    EXPECT_EQ(logOfLines(companion, 3), (Lines{LR"(line bytes=0 hex= text="")",
                                               LR"(line bytes=7 hex=610962000D0A0A text="a b   ")",
                                               LR"(line bytes=6 hex=544F4F4C2D37 text="TOOL-7")"}));
}

TEST_F(CompanionLines, mayArriveInPieces)
{
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    {
        const Client client;
        ASSERT_TRUE(client.sendBytes("TOOL"));
        ASSERT_TRUE(sendToCompanion("between\n"));
        ASSERT_TRUE(companion.waitForLog(L"text=\"between\""));
        ASSERT_TRUE(client.sendBytes("-7\n"));
    }
    EXPECT_TRUE(companion.waitForLog(L"tool-data id=7"));
    EXPECT_EQ(companion.count(L"line bytes=7 hex=544F4F4C2D370A"), 1u);
}

TEST_F(CompanionLines, areLoggedInOrder)
{
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    Lines expected;
    for (int id = 1; id <= 20; ++id) {
        ASSERT_TRUE(sendToCompanion("TOOL-" + std::to_string(id) + "\n"));
        expected.push_back(L"tool-data id=" + std::to_wstring(id));
    }
    EXPECT_EQ(linesThatStart(logOfLines(companion, 60), L"tool-data id="), expected);
}

TEST_F(CompanionLines, doNotWaitForASilentConnection)
{
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    const Client silent;
    ASSERT_TRUE(silent.sendBytes("half"));
    ASSERT_TRUE(sendToCompanion("TOOL-7\n"));
    ASSERT_TRUE(companion.waitForLog(L"tool-data id=7"));
    EXPECT_EQ(companion.count(L"line "), 1u); // the silent connection is still open
    EXPECT_TRUE(silent.waitForEnd());
    EXPECT_TRUE(companion.waitForLog(LR"(line bytes=4 hex=68616C66 text="half")"));
}

TEST_F(CompanionLines, areCutAfter1024Bytes)
{
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    const Client endless;
    ASSERT_TRUE(endless.sendBytes(std::string(3000, 'x')));
    EXPECT_TRUE(endless.waitForEnd());
    EXPECT_TRUE(companion.waitForLog(L"line bytes=1024 "));
    const std::wstring aroundTheBytes = L"line bytes=1024 hex= text=\"\"";
    EXPECT_EQ(companion.lastLine(L"line ").size(), aroundTheBytes.size() + 3 * 1024);
}

TEST_F(CompanionLines, arriveOverEveryLocalAddress)
{
    EXPECT_TRUE(BoundSocket().waitUntilBound());
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    EXPECT_FALSE(BoundSocket().isBound());
    for (const char* address : {"127.0.0.1", "127.0.0.2"})
        EXPECT_TRUE(Client(address).isConnected()) << address;
}

TEST_F(CompanionLines, areMissedWhileThePortIsTaken)
{
    BoundSocket other;
    ASSERT_TRUE(other.waitUntilBound());
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    EXPECT_TRUE(companion.waitForLog(L"port-taken port=4559 error=10048"));
    EXPECT_EQ(companion.run(L"--checkout a"), carriedOut);
    EXPECT_EQ(companion.run(L"--quit"), carriedOut);
    EXPECT_EQ(companion.log().back(), L"stopped");
    EXPECT_EQ(companion.count(L"port-open"), 0u);
}

TEST_F(CompanionLines, arriveOnceThePortIsFree)
{
    auto other = std::make_unique<BoundSocket>();
    ASSERT_TRUE(other->waitUntilBound());
    const CompanionProgram companion(installation);
    EXPECT_TRUE(companion.waitForLog(L"port-taken port=4559 error=10048"));
    other.reset();
    ASSERT_TRUE(companion.waitForLog(L"port-open port=4559"));
    ASSERT_TRUE(sendToCompanion("TOOL-7\n"));
    EXPECT_TRUE(companion.waitForLog(L"tool-data id=7"));
    EXPECT_EQ(companion.count(L"port-taken"), 1u);
}

TEST_F(CompanionLines, leaveThePortFreeAtTheEnd)
{
    for (int run = 0; run < 2; ++run) {
        const CompanionProgram companion(installation);
        ASSERT_NE(companion.waitForWindow(), nullptr);
        const Client open;
        ASSERT_TRUE(open.isConnected());
        EXPECT_EQ(companion.run(L"--quit"), carriedOut);
        EXPECT_EQ(companion.process().waitForExit(), 0u);
        EXPECT_TRUE(open.waitForEnd());
        EXPECT_EQ(companion.count(L"port-taken"), 0u);
    }
}

TEST_F(CompanionLines, leaveThePortFreeWhenItIsKilledAmongThem)
{
    constexpr int kills = 5;
    for (int i = 0; i < kills; ++i) {
        {
            const std::jthread lines([](const std::stop_token& stop) {
                while (!stop.stop_requested())
                    sendToCompanion("TOOL-7\n");
            });
            const CompanionProgram companion(installation); // is ended first
            ASSERT_TRUE(companion.waitForLog(L"tool-data", companion.count(L"tool-data") + 10));
        }
        ASSERT_TRUE(BoundSocket().waitUntilBound());
    }
}

TEST_F(CompanionLines, showASheetsOperationsAndTools)
{
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    const std::wstring file = announceSheet(17, L"sheet 1.xml", twoOperations);
    const HWND window = waitForWindowTitled(L"Setup sheet 17: bracket.mcam");
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(waitUntil([&] { return IsWindowVisible(window) != FALSE; }));
    EXPECT_EQ(logOfLines(companion, 2).back(), L"setup-sheet id=17 file=\"" + file + L"\"");
    EXPECT_EQ(rowsOfList(window, 0), 2);
    EXPECT_EQ(rowsOfList(window, 1), 1);
    EXPECT_EQ(shownText(window), L"not shown");
    PostMessageW(window, WM_CLOSE, 0, 0);
    EXPECT_TRUE(waitUntil([&] { return !IsWindow(window); }));
    EXPECT_TRUE(companion.process().isRunning());
}

TEST_F(CompanionLines, showAnyOtherSheetAsText)
{
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    announceSheet(17, L"sheet.xml", twoOperations);
    const HWND window = waitForWindowTitled(L"Setup sheet 17: bracket.mcam");
    ASSERT_NE(window, nullptr);
    announceSheet(-3, L"notes.txt", "first \xC3\xA4\nsecond\r\n");
    EXPECT_EQ(waitForWindowTitled(L"Setup sheet -3: notes.txt"), window);
    EXPECT_TRUE(waitUntil([&] { return shownText(window) == L"first \u00E4\r\nsecond\r\n"; }));
}

TEST_F(CompanionLines, reportAnUnreadableSetupSheet)
{
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    ASSERT_TRUE(sendToCompanion("MCAMXMLIMPORTDATAID=5;C:\\no such\\file.xml\n"));
    Lines log = logOfLines(companion, 3);
    log.erase(log.begin());
    EXPECT_EQ(log, (Lines{LR"(setup-sheet id=5 file="C:\no such\file.xml")",
                          LR"(setup-sheet-unreadable id=5 file="C:\no such\file.xml")"}));
    announceSheet(6, L"large.xml", std::string(1024 * 1024 + 1, ' '));
    EXPECT_TRUE(companion.waitForLog(L"setup-sheet-unreadable id=6 "));
    EXPECT_EQ(FindWindowW(L"ZemSheetWindow", nullptr), nullptr);
}

TEST_F(CompanionLines, logTheAddInsArgumentsUnchanged)
{
    const CompanionProgram companion(installation);
    EXPECT_EQ(companion.run(LR"(--checkout "C:\Temp\\TORVA ZEM-7.tmp")"), carriedOut);
    EXPECT_EQ(companion.log().back(), LR"(check-out file="C:\Temp\\TORVA ZEM-7.tmp")");
    EXPECT_EQ(companion.run(L"--about --parentwindow 0"), carriedOut);
    EXPECT_EQ(companion.log().back(), L"about parent=0");
    const HWND about = waitForWindowTitled(L"About TORVA ZEM");
    ASSERT_NE(about, nullptr);
    PostMessageW(FindWindowExW(about, nullptr, L"BUTTON", L"OK"), BM_CLICK, 0, 0);
    EXPECT_TRUE(waitUntil([&] { return !IsWindow(about); }));
    EXPECT_TRUE(companion.process().isRunning());
}
