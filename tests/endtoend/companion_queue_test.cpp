// How the stand-in Companion handles NC queues and tool data: the test writes files to its folder,
// sends a notice for each, and checks the log and the windows.
#include "support/companion_program.h"
#include "support/sockets.h"
#include "support/windows.h"

#include <gtest/gtest.h>

using namespace testing_support;

namespace {

constexpr size_t tooLarge = 1024 * 1024 + 1;

// A line of tool data for request 17.
std::string formatToolRecord(int number, const std::string& comment)
{
    return "TOOLDATA|DATAID=17|TPNAME=000002A1F3C05E40|CPNAME=000002A1F3C05E80|DIA=12.5|TNUM=" +
           std::to_string(number) +
           "|TTYPE=10|GEOFILE=000002A1F3C05EC0|CRAD=0.5|LOFF=5|DOFF=6|NCNAME=000002A1F3C05F00"
           "|FLUTES=3|OPID=101|RADTYPE=2|TLMATERIAL=1|OPFEED=900|LENGTHOFFSET=5"
           "|LENGTH OVERALL=80|STATION=8|SLOT=9|ADSHLDRANGLE=45|ADDIAM=11.5"
           "|GEOFILE=000002A1F3C05F40|OPERATION NUMBER=1|TIPANGLE=118|PILOTDIA=1.25"
           "|FLUTELENGTH=26|SHLDRLENGTH=30|SHLDRDIAM=13|ARBORDIA=14|HOLDERDIA=50"
           "|HOLDERLENGTH=60|RPM=8000|FEED=900|PLUNGE=300|RETRACT=1e+06|GROUP=15"
           "|MACHINEGROUP=16|LEVELNUMBER=18|SPINDLEROT=1|COMMENT=" +
           comment +
           "|PLANEWOFF=54|OPERATIONCOMMENT=|OPERATIONTYPE=19|HOLDERNO=20|COMPENSATIONTYPE=21"
           "|DEPTH=-12.5|TPTYPE=22|TPX=0|TPY=0|TPZ=0|CPTYPE=23|CPX=0|CPY=0|CPZ=0|OPTIME=61.5\r\n";
}

// A monochrome bitmap file of 64 x 32 white pixels.
const std::string bitmapOf64x32 = std::string("BM\x3E\1\0\0\0\0\0\0\x3E\0\0\0"
                                              "\x28\0\0\0\x40\0\0\0\x20\0\0\0\1\0\1\0\0\0\0\0\0\1"
                                              "\0\0\0\0\0\0\0\0\0\0\2\0\0\0\2\0\0\0"
                                              "\0\0\0\0\xFF\xFF\xFF\0",
                                              62) +
                                  std::string(256, '\xFF');

// A bitmap file with four bytes of pixel data whose header declares 4000 x 4000 pixels of 24 bits.
const std::string bitmapOfFourBytes =
    std::string("BM\x3A\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\xA0\x0F\0\0\xA0\x0F\0\0\1\0\x18\0", 30) +
    std::string(28, '\0');

class CompanionsExchange : public ::testing::Test {
protected:
    CompanionsExchange() { installCompanionWithLibrary(installation); }

    std::wstring write(const std::wstring& name, const std::string& bytes) const
    {
        const std::wstring file = installation.path(L"temp\\" + name);
        writeBytes(file, bytes);
        return file;
    }

    // Writes a file and sends a notice that it is an NC queue.
    std::wstring announceQueue(const std::wstring& name, const std::string& bytes) const
    {
        const std::wstring file = write(name, bytes);
        EXPECT_TRUE(sendToCompanion("IMPORTNCQUEUE|" + toUtf8(file) + "\n"));
        return file;
    }

    // The log lines starting with the first one that begins with the text.
    static Lines logFrom(const CompanionProgram& companion, const std::wstring& text)
    {
        Lines log = companion.log();
        while (!log.empty() && log.front().rfind(text, 0) != 0)
            log.erase(log.begin());
        return log;
    }

    Sockets sockets;
    Installation installation{Registry::ofTheUser};
};

using CompanionNcQueue = CompanionsExchange;
using CompanionToolData = CompanionsExchange;

} // namespace

TEST_F(CompanionNcQueue, isListedAndItsFileRemoved)
{
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    const std::wstring first = write(L"A B.NC", "%\r\nO1\r\n");
    const std::wstring missing = installation.path(L"temp\\GONE.NC");
    const std::wstring queue = announceQueue(L"ncqueue-17.txt", "NCPATH|3|" + toUtf8(first) +
                                                                    "|left|right\r\n"
                                                                    "no line of a queue\r\n"
                                                                    "NCPATH|-1|" +
                                                                    toUtf8(missing) + "|Top\r\n");
    const HWND window = waitForWindowTitled(L"NC queue: ncqueue-17.txt");
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(waitUntil([&] { return IsWindowVisible(window) != FALSE; }));
    EXPECT_EQ(rowsOfList(window, 0), 2);
    EXPECT_EQ(logFrom(companion, L"nc-queue"),
              (Lines{L"nc-queue file=\"" + queue + L"\"",
                     L"nc-program number=3 file=\"" + first + L"\" bytes=7 group=\"left|right\"",
                     L"nc-queue-line-bad line=2",
                     L"nc-program number=-1 file=\"" + missing + L"\" bytes=-1 group=\"Top\""}));
    EXPECT_FALSE(readBytes(queue).has_value());
    EXPECT_TRUE(readBytes(first).has_value());
}

TEST_F(CompanionNcQueue, replacesTheEarlierQueue)
{
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    announceQueue(L"ncqueue-17.txt", "NCPATH|3|C:\\A.NC|G\r\nNCPATH|3|C:\\B.NC|G\r\n");
    const HWND window = waitForWindowTitled(L"NC queue: ncqueue-17.txt");
    ASSERT_NE(window, nullptr);
    const std::wstring other = announceQueue(L"other.txt", "NCPATH|3|C:\\C.NC|G\r\n");
    EXPECT_EQ(waitForWindowTitled(L"NC queue: other.txt"), window);
    EXPECT_EQ(rowsOfList(window, 0), 1);
    EXPECT_TRUE(readBytes(other).has_value());
    PostMessageW(window, WM_CLOSE, 0, 0);
    EXPECT_TRUE(waitUntil([&] { return !IsWindow(window); }));
    EXPECT_TRUE(companion.process().isRunning());
}

TEST_F(CompanionNcQueue, isReportedAndKeptWhenUnreadable)
{
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    ASSERT_TRUE(sendToCompanion("IMPORTNCQUEUE|C:\\no such\\ncqueue-5.txt\n"));
    EXPECT_TRUE(companion.waitForLog(LR"(nc-queue-unreadable file="C:\no such\ncqueue-5.txt")"));
    const std::wstring large = announceQueue(L"ncqueue-6.txt", std::string(tooLarge, ' '));
    EXPECT_TRUE(companion.waitForLog(L"nc-queue-unreadable file=\"" + large + L"\""));
    EXPECT_TRUE(readBytes(large).has_value());
    EXPECT_EQ(FindWindowW(L"ZemQueueWindow", nullptr), nullptr);
}

TEST_F(CompanionToolData, listsEachTool)
{
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    const std::wstring file = write(L"tool-17.txt", formatToolRecord(4, "Mill |PLANEWOFF=1") +
                                                        "\r\n" + formatToolRecord(-5, "\xC4"));
    ASSERT_TRUE(sendToCompanion("TOOL-17\n"));
    const HWND window = waitForWindowTitled(L"Tools 17");
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(waitUntil([&] { return IsWindowVisible(window) != FALSE; }));
    EXPECT_EQ(rowsOfList(window, 0), 2);
    EXPECT_EQ(rowsOfList(window, 1), 18);
    const std::wstring afterNumber = L" type=10 diameter=12.5 operation=101 comment=";
    EXPECT_EQ(
        logFrom(companion, L"tool-data"),
        (Lines{L"tool-data id=17", L"tool id=17 number=4" + afterNumber + L"\"Mill |PLANEWOFF=1\"",
               L"tool-record-bad line=2", L"tool id=17 number=-5" + afterNumber + L"\"\u00C4\""}));
    EXPECT_TRUE(readBytes(file).has_value());
}

TEST_F(CompanionToolData, showsTheSelectedToolsPicture)
{
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    write(L"toolimage-4.bmp", bitmapOf64x32);
    write(L"toolimage-6.bmp", bitmapOfFourBytes);
    write(L"tool-17.txt",
          formatToolRecord(4, "") + formatToolRecord(5, "") + formatToolRecord(6, ""));
    ASSERT_TRUE(sendToCompanion("TOOL-17\n"));
    const HWND window = waitForWindowTitled(L"Tools 17");
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(waitUntil([&] { return shownPicture(window) == L"toolimage-4.bmp, 64 x 32"; }));
    selectWith(VK_DOWN, window);
    EXPECT_TRUE(waitUntil([&] { return shownPicture(window) == L"No picture of this tool yet"; }));
    selectWith(VK_HOME, window);
    EXPECT_TRUE(waitUntil([&] { return shownPicture(window) == L"toolimage-4.bmp, 64 x 32"; }));
    selectWith(VK_END, window);
    EXPECT_TRUE(waitUntil([&] { return shownPicture(window) == L"No picture of this tool yet"; }));
}

TEST_F(CompanionToolData, mayBeEmpty)
{
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    write(L"tool--3.txt", "");
    ASSERT_TRUE(sendToCompanion("TOOL--3\n"));
    const HWND window = waitForWindowTitled(L"Tools -3");
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(rowsOfList(window, 0), 0);
    EXPECT_EQ(rowsOfList(window, 1), 0);
    EXPECT_EQ(companion.log().back(), L"tool-data id=-3");
}

TEST_F(CompanionToolData, isReportedWhenUnreadable)
{
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    const std::wstring large = write(L"tool-6.txt", std::string(tooLarge, ' '));
    ASSERT_TRUE(sendToCompanion("TOOL-6\n"));
    EXPECT_TRUE(companion.waitForLog(L"tool-data-unreadable file=\"" + large + L"\""));
    EXPECT_EQ(FindWindowW(L"ZemToolWindow", nullptr), nullptr);
}
