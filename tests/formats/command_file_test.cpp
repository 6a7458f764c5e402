#include "formats/command_file.h"

#include <gtest/gtest.h>

using namespace torvapdm;
using namespace std::string_view_literals;

#define MARK "\xEF\xBB\xBF"

namespace torvapdm {

bool operator==(const Command& a, const Command& b)
{
    return a.kind == b.kind && a.file.id == b.file.id && a.file.path == b.file.path;
}

void PrintTo(const Command& request, std::ostream* out)
{
    *out << "kind " << static_cast<int>(request.kind) << ", id " << request.file.id << ", path "
         << testing::PrintToString(request.file.path);
}

} // namespace torvapdm

namespace {

const Command malformed{};
const Command checkIn{Command::Kind::checkIn, 0, {}};

Command open(int id, const std::wstring& path)
{
    return {Command::Kind::open, id, path};
}

Command newFile(int id)
{
    return {Command::Kind::newFile, id, {}};
}

struct CommandCase {
    std::string_view text;
    Command expected;
};

void expectEach(const std::vector<CommandCase>& cases)
{
    for (const CommandCase& c : cases)
        EXPECT_EQ(parseCommand(c.text), c.expected)
            << "text: " << testing::PrintToString(std::string(c.text));
}

} // namespace

TEST(CommandText, holdsTheIdAndPathOfAnOpenRequest)
{
    expectEach({
        {MARK "12 C:\\parts\\a.mcam\n", open(12, L"C:\\parts\\a.mcam")},
        {MARK "7 C:\\a b c.mcam\n", open(7, L"C:\\a b c.mcam")},
        {MARK "-5 x\n", open(-5, L"x")},
        {MARK "+5 x\n", open(5, L"x")},
        {MARK "2147483647 x\n", open(2147483647, L"x")},
        {MARK "-2147483648 x\n", open(-2147483647 - 1, L"x")},
        {MARK "\t12 x\n", open(12, L"x")},
        {MARK "12abc x\n", open(12, L"x")},
    });
}

TEST(CommandText, startsANewFileWhenThePathIsEmpty)
{
    expectEach({{MARK "7 \n", newFile(7)}, {MARK "0 \n", newFile(0)}, {MARK "7 ", newFile(7)}});
}

TEST(CommandText, isACheckInByItsFirstWord)
{
    expectEach({{"CHECKIN", checkIn},
                {"CHECKIN ", checkIn},
                {"CHECKIN C:\\a.mcam\n", checkIn},
                {"CHECKIN \0\xFF"sv, checkIn}});
}

TEST(CommandText, isNotACheckInOtherwise)
{
    expectEach({{"CHECKIN\n", malformed},
                {"checkin x", malformed},
                {MARK "CHECKIN x", malformed},
                {" CHECKIN x", malformed},
                {"CHECKINS x", malformed},
                {"CHECKIN\0"sv, malformed}});
}

TEST(CommandText, skipsItsFirstThreeBytes)
{
    expectEach({{"xyz12 C:\\a\n", open(12, L"C:\\a")},
                {"12345 C:\\a\n", open(45, L"C:\\a")},
                {"x y5 C:\\a\n", open(5, L"y5 C:")}}); // the path starts at the first space
}

TEST(CommandText, keepsACarriageReturnInThePath)
{
    expectEach({{MARK "12 C:\\a\r\n", open(12, L"C:\\a\r")}, {MARK "12 \r\n", open(12, L"\r")}});
}

TEST(CommandText, losesTheLastByteWithoutALineFeed)
{
    expectEach({{MARK "12 C:\\ab", open(12, L"C:\\a")}, {MARK "12 a", newFile(12)}});
}

TEST(CommandText, readsPastTheFirstLine)
{
    // The line feed is at index 10, so the piece is the 8 bytes from the space on; its first and
    // last bytes are removed.
    expectEach({{MARK "12 abcd\nsecond line\n", open(12, L"abcd\ns")}});
}

TEST(CommandText, wrapsAroundForAnEarlyLineFeed)
{
    expectEach({{"a\nb5 path to\n", open(5, L"path to")}, {"\nab5 path\n", malformed}});
}

TEST(CommandText, widensEachByteAsASignedValue)
{
    expectEach({{MARK "1 \x7F\x80\xC4\xFF\n", open(1, L"\x7F\xFF80\xFFC4\xFFFF")},
                {MARK "1 a\0b\n"sv, open(1, std::wstring(L"a\0b", 3))}});
}

TEST(CommandText, isMalformedWithoutASpace)
{
    expectEach({{"", malformed},
                {"a", malformed},
                {" ", malformed},
                {"1 ", malformed},
                {MARK, malformed},
                {MARK "12", malformed},
                {MARK "12\n", malformed},
                {"\0\0\0\0\0\0"sv, malformed}});
}

TEST(CommandText, isMalformedWithoutAValidId)
{
    expectEach({{MARK " C:\\a\n", malformed},
                {MARK "abc C:\\a\n", malformed},
                {MARK "- C:\\a\n", malformed},
                {MARK "2147483648 C:\\a\n", malformed},
                {MARK "-2147483649 C:\\a\n", malformed},
                {MARK "99999999999999999999 C:\\a\n", malformed},
                {MARK "\n12 C:\\a\n", newFile(12)}});
}

TEST(CommandText, isMalformedWithoutAPathPiece)
{
    // The line feed is at index 2, so the piece is empty.
    expectEach({{"ab\n5 C:\\a\n", malformed}});
}

TEST(CommandText, keepsALongPathWhole)
{
    const std::string path(65000, 'p');
    EXPECT_EQ(parseCommand(MARK "1 " + path + "\n"),
              open(1, std::wstring(path.begin(), path.end())));
}
