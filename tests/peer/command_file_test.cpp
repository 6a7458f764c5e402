// Command files: the bytes to write, and how the add-in reads them.
#include "peer/command_file.h"

#include <gtest/gtest.h>

using namespace peer;

using namespace std::string_literals;

#define MARK "\xEF\xBB\xBF"

namespace {

void expectOpening(const std::string& bytes, HostCommandKind kind, int id, const std::string& path,
                   size_t remarks)
{
    const HostCommand text = parseHostCommand(bytes);
    EXPECT_EQ(hostCommandName(text.kind), hostCommandName(kind)) << bytes;
    EXPECT_EQ(text.id, id) << bytes;
    EXPECT_EQ(text.path, path) << bytes;
    EXPECT_EQ(text.remarks.size(), remarks) << bytes;
}

} // namespace

TEST(PeerOpenRequest, isMarkIdSpacePathLineFeed)
{
    EXPECT_EQ(formatOpenRequest(17, L"C:\\ZEM\\work\\bracket.mcam"),
              MARK "17 C:\\ZEM\\work\\bracket.mcam\n");
    EXPECT_EQ(formatOpenRequest(-2147483647 - 1, L"a"), MARK "-2147483648 a\n");
    EXPECT_EQ(formatOpenRequest(0, L" a b "), MARK "0  a b \n");
}

TEST(PeerOpenRequest, acceptsOnlyPlainAscii)
{
    EXPECT_EQ(formatOpenRequest(1, L" !~"), MARK "1  !~\n");
    for (const wchar_t* path : {L"", L"C:\\M\u00FCller", L"a\tb", L"a\n", L"a\x7F", L"\u4E2D"})
        EXPECT_EQ(formatOpenRequest(1, path), std::nullopt) << path;
}

TEST(PeerOpenRequest, isAtMost65536Bytes)
{
    const std::wstring longest(65536 - 6, L'p'); // mark, one digit, space, line feed
    EXPECT_EQ(formatOpenRequest(1, longest).value_or("").size(), 65536u);
    EXPECT_EQ(formatOpenRequest(1, longest + L'p'), std::nullopt);
}

TEST(PeerNewFileRequest, isAnOpenRequestWithoutPath)
{
    EXPECT_EQ(formatNewFileRequest(17), MARK "17 \n");
    EXPECT_EQ(formatNewFileRequest(-1), MARK "-1 \n");
}

TEST(PeerCheckInRequest, isTheKeywordAndTheName)
{
    EXPECT_EQ(formatCheckIn(L"bracket.mcam"), "CHECKIN bracket.mcam");
    EXPECT_EQ(formatCheckIn(L""), "CHECKIN ");
    EXPECT_EQ(formatCheckIn(L"M\u00FCller\n.mcam"), "CHECKIN M?ller?.mcam");
}

TEST(PeerPlainAscii, isPrintableCharactersAndSpace)
{
    EXPECT_TRUE(isPlainAscii(L""));
    EXPECT_TRUE(isPlainAscii(L" C:\\a~b"));
    for (const wchar_t* text : {L"\x1F", L"\x7F", L"\u0080", L"a\u00E4"})
        EXPECT_FALSE(isPlainAscii(text)) << text;
}

TEST(PeerRequestText, isAnOpenRequest)
{
    expectOpening(MARK "12 C:\\parts\\a b.mcam\n"s, HostCommandKind::open, 12,
                  "C:\\parts\\a b.mcam", 0);
    expectOpening(MARK "-7 C:\\a\n"s, HostCommandKind::open, -7, "C:\\a", 0);
    expectOpening(MARK "7 \n"s, HostCommandKind::newFile, 7, "", 0);
}

TEST(PeerRequestText, keepsTheAddInsOddLengths)
{
    expectOpening(MARK "12 C:\\a\r\n"s, HostCommandKind::open, 12, "C:\\a\r", 1);
    expectOpening(MARK "12 C:\\a"s, HostCommandKind::open, 12, "C:\\", 1);
    expectOpening("xyz12 C:\\a\n", HostCommandKind::open, 12, "C:\\a", 1);
    expectOpening(MARK "12 C:\\\xC4\n"s, HostCommandKind::open, 12, "C:\\\xC4", 1);
    expectOpening(MARK "-1 C:\\a\n"s, HostCommandKind::open, -1, "C:\\a", 1);
    expectOpening(MARK "1 C:\\a\nmore"s, HostCommandKind::open, 1, "C:\\a\n", 2);
}

TEST(PeerRequestText, isACheckInOnlyWithTheExactWord)
{
    expectOpening("CHECKIN a.mcam", HostCommandKind::checkIn, 0, "a.mcam", 0);
    expectOpening("CHECKIN", HostCommandKind::checkIn, 0, "", 0);
    expectOpening("CHECKIN\n", HostCommandKind::malformed, 0, "", 1);
    expectOpening("checkin a", HostCommandKind::malformed, 0, "", 1);
    expectOpening(MARK "CHECKIN a"s, HostCommandKind::malformed, 0, "", 1);
}

TEST(PeerRequestText, isMalformedWithoutSpaceOrNumber)
{
    expectOpening("", HostCommandKind::none, 0, "", 0);
    expectOpening("x", HostCommandKind::malformed, 0, "", 1);
    expectOpening(MARK "12"s, HostCommandKind::malformed, 0, "", 1);
    expectOpening(MARK "2147483648 C:\\a\n"s, HostCommandKind::malformed, 0, "", 1);
    expectOpening(MARK "x C:\\a\n"s, HostCommandKind::malformed, 0, "", 1);
}

TEST(PeerRequestText, isTooLongAbove65536Bytes)
{
    const std::string name(65536, 'a');
    EXPECT_EQ(parseHostCommand("CHECKIN " + name.substr(8)).remarks.size(), 0u);
    EXPECT_EQ(parseHostCommand("CHECKIN " + name.substr(7)).remarks.size(), 1u);
}
