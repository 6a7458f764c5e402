#include "peer/notice.h"
#include "peer/notice_port.h"

#include <gtest/gtest.h>

#include <initializer_list>

using namespace peer;
using namespace std::string_literals;

namespace {

struct NoticeCase {
    std::string bytes;
    NoticeKind kind;
    std::int64_t id;
    std::string path;
};

void expectEach(std::initializer_list<NoticeCase> cases)
{
    for (const NoticeCase& c : cases) {
        const Notice notice = parseNotice(c.bytes);
        EXPECT_EQ(notice.kind, c.kind) << c.bytes;
        EXPECT_EQ(notice.id, c.id) << c.bytes;
        EXPECT_EQ(notice.path, c.path) << c.bytes;
    }
}

void expectUnknown(std::initializer_list<std::string> lines)
{
    for (const std::string& line : lines)
        expectEach({{line, NoticeKind::unknown, 0, ""}});
}

constexpr std::uint32_t address(unsigned a, unsigned b, unsigned c, unsigned d)
{
    return a << 24 | b << 16 | c << 8 | d;
}

constexpr std::uint32_t own = address(192, 168, 1, 20);

} // namespace

TEST(PeerNotice, hasFourForms)
{
    expectEach({
        {"MCAMXMLIMPORTDATAID=17;C:\\a b\\s.xml\n", NoticeKind::setupSheet, 17, "C:\\a b\\s.xml"},
        {"ZEMID=42|C:\\parts\\a.mcam\n", NoticeKind::commit, 42, "C:\\parts\\a.mcam"},
        {"TOOL-7\n", NoticeKind::toolData, 7, ""},
        {"IMPORTNCQUEUE|C:\\t\\ncqueue-7.txt\n", NoticeKind::ncQueue, 0, "C:\\t\\ncqueue-7.txt"},
    });
}

TEST(PeerNotice, isFormattedAsItIsParsed)
{
    for (const std::string& line :
         {"MCAMXMLIMPORTDATAID=-17;C:\\a b\\s.xml\n"s, "ZEMID=4294967295|C:\\parts\\a.mcam\n"s,
          "TOOL-7\n"s, "IMPORTNCQUEUE|C:\\t\\ncqueue-7.txt\n"s})
        EXPECT_EQ(formatNotice(parseNotice(line)), line);
    EXPECT_EQ(formatNotice({}), "");
}

TEST(PeerNotice, hasASignedIdExceptInACommit)
{
    expectEach({
        {"MCAMXMLIMPORTDATAID=0;p\n", NoticeKind::setupSheet, 0, "p"},
        {"MCAMXMLIMPORTDATAID=-2147483648;p\n", NoticeKind::setupSheet, -2147483648LL, "p"},
        {"TOOL--1\n", NoticeKind::toolData, -1, ""},
        {"TOOL-2147483647\n", NoticeKind::toolData, 2147483647, ""},
        {"ZEMID=4294967295|p\n", NoticeKind::commit, 4294967295, "p"},
    });
    expectUnknown({"TOOL-2147483648\n", "MCAMXMLIMPORTDATAID=4294967295;p\n", "ZEMID=-1|p\n",
                   "ZEMID=4294967296|p\n"});
}

TEST(PeerNotice, keepsEveryByteOfThePath)
{
    expectEach({
        {"MCAMXMLIMPORTDATAID=1; a;b|c \n", NoticeKind::setupSheet, 1, " a;b|c "},
        {"ZEMID=1||;\n", NoticeKind::commit, 1, "|;"},
        {"IMPORTNCQUEUE|\xE4\x81?\n", NoticeKind::ncQueue, 0, "\xE4\x81?"},
    });
}

TEST(PeerNotice, isOneLineWithLineFeed)
{
    expectUnknown({"", "\n", "TOOL-7", "TOOL-7\r\n", "TOOL-7\n\n", "\nTOOL-7\n", "TOOL-7\nTOOL-8\n",
                   "IMPORTNCQUEUE|a\tb\n", "IMPORTNCQUEUE|a\0b\n"s, "TOOL-7\n\0"s});
}

TEST(PeerNotice, isUnknownInAnyOtherForm)
{
    expectUnknown({"TOOL-\n",
                   "TOOL-7 \n",
                   "TOOL- 7\n",
                   "TOOL-07\n",
                   "TOOL-+7\n",
                   "TOOL--0\n",
                   "TOOL-7;p\n",
                   "tool-7\n",
                   " TOOL-7\n",
                   "MCAMXMLIMPORT DATAID=17;p\n",
                   "MCAMXMLIMPORTDATAID=17;\n",
                   "MCAMXMLIMPORTDATAID=17\n",
                   "MCAMXMLIMPORTDATAID=;p\n",
                   "MCAMXMLIMPORTDATAID=17|p\n",
                   "ZEMID=42|\n",
                   "ZEMID=42;p\n",
                   "ZEMID=|p\n",
                   "IMPORTNCQUEUE|\n",
                   "IMPORTNCQUEUE\n",
                   "HELLO\n"});
}

TEST(PeerOwnAddress, equalsTheLocalAddress)
{
    EXPECT_TRUE(isOwnAddress(own, own));
    EXPECT_FALSE(isOwnAddress(address(192, 168, 1, 21), own));
    EXPECT_FALSE(isOwnAddress(address(10, 0, 0, 1), own));
    EXPECT_FALSE(isOwnAddress(address(1, 0, 0, 127), own));
}

TEST(PeerOwnAddress, isAnyLoopbackAddress)
{
    EXPECT_TRUE(isOwnAddress(address(127, 0, 0, 1), address(127, 0, 0, 1)));
    EXPECT_TRUE(isOwnAddress(address(127, 0, 0, 2), address(127, 0, 0, 1)));
    EXPECT_TRUE(isOwnAddress(address(127, 255, 255, 254), own));
    EXPECT_FALSE(isOwnAddress(address(126, 255, 255, 255), own));
    EXPECT_FALSE(isOwnAddress(address(128, 0, 0, 1), own));
    EXPECT_FALSE(isOwnAddress(own, address(127, 0, 0, 1)));
}
