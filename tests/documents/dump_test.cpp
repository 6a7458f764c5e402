#include "documents/pages.h"

#include <gtest/gtest.h>

using namespace documents;

namespace {

using Lines = std::vector<std::string>;

Dump read(const Lines& lines)
{
    return parseDump({"dump", "x", 10, lines});
}

std::string faultOf(const Lines& lines)
{
    return read(lines).fault;
}

Dump dumpOf(const Lines& lines)
{
    EXPECT_EQ(faultOf(lines), "");
    return read(lines);
}

bool isShown(std::string_view bytes, const Dump& dump)
{
    return difference(bytes, dump).empty();
}

const Dump request = dumpOf(
    {"00  EF BB BF    mark", "03  \"17\"  id", "05  20", "06  \"C:\\a\"  path", "0A  0A    end"});

} // namespace

TEST(Dump, showsItsBytesAndNoOthers)
{
    const std::string bytes = "\xEF\xBB\xBF"
                              "17 C:\\a\n";
    EXPECT_TRUE(isShown(bytes, request));
    for (size_t i = 0; i < bytes.size(); ++i) {
        std::string other = bytes;
        ++other[i];
        EXPECT_FALSE(isShown(other, request)) << i;
        EXPECT_FALSE(isShown(bytes.substr(0, i), request)) << i;
        EXPECT_FALSE(isShown(bytes.substr(0, i) + '7' + bytes.substr(i), request)) << i;
    }
    EXPECT_FALSE(isShown(bytes + '\n', request));
}

TEST(Dump, acceptsAnyByteWhereMarked)
{
    const Dump dump = dumpOf({"00  41 ?? 43  a byte that differs"});
    EXPECT_TRUE(isShown("ABC", dump));
    EXPECT_TRUE(isShown(std::string("A\0C", 3), dump));
    EXPECT_FALSE(isShown("ABD", dump));
    EXPECT_FALSE(isShown("AB", dump));
}

TEST(Dump, omitsTheStatedNumberOfBytes)
{
    const Dump dump = dumpOf({"00  41", "01  \xE2\x80\xA6 3 bytes  pixels", "04  42"});
    EXPECT_TRUE(isShown("A123B", dump));
    EXPECT_FALSE(isShown("A12B", dump));
    EXPECT_FALSE(isShown("A1234B", dump));
    EXPECT_FALSE(isShown("A123", dump));
}

TEST(Dump, omitsARestOfAnyLength)
{
    const Dump dump = dumpOf({"00  41", "01  \xE2\x80\xA6 any"});
    EXPECT_TRUE(isShown("A", dump));
    EXPECT_TRUE(isShown("A123", dump));
    EXPECT_FALSE(isShown("", dump));
}

TEST(Dump, hasBytesUnlessSomeAreOmitted)
{
    EXPECT_EQ(bytesOf(dumpOf({"00  41 ??", "02  \"b\""})), "A0b");
    EXPECT_EQ(bytesOf(dumpOf({"00  41", "01  \xE2\x80\xA6 3 bytes"})), std::nullopt);
    EXPECT_EQ(bytesOf(dumpOf({"00  41", "01  \xE2\x80\xA6 any"})), std::nullopt);
}

TEST(Dump, pointsOutTheFirstDifference)
{
    EXPECT_EQ(difference("ABD", dumpOf({"00  41 ?? 43"})), "offset 02: 44, shown is 43");
    EXPECT_EQ(difference("AB", dumpOf({"00  41 ?? 43"})), "2 bytes, shown are 3");
}

TEST(Dump, isParsedAsItIsWritten)
{
    const std::string bytes("A\0\xFF 17 bytes of it", 20);
    const auto blocks = fencedBlocks(asBlock("x", bytes), "dump");
    ASSERT_EQ(blocks.size(), 1u);
    EXPECT_EQ(bytesOf(parseDump(blocks[0])), bytes);
}

TEST(DumpText, givesTheBytesOfEachForm)
{
    const Dump dump = dumpOf(
        {"00  EF BB ??                 mark  of three", "03  \"17  C:\\a.mcam\"         request",
         "10  0A", "11  \xE2\x80\xA6 256 bytes              pixels", "111  \xE2\x80\xA6 any"});
    using Bytes = std::vector<std::optional<char>>;
    Bytes expected = {'\xEF', '\xBB', std::nullopt};
    for (const char byte : std::string("17  C:\\a.mcam\n"))
        expected.emplace_back(byte);
    expected.resize(expected.size() + 256);
    EXPECT_EQ(dump.bytes, expected);
    EXPECT_TRUE(dump.leavesOut);
    EXPECT_TRUE(dump.isOpenEnded);
}

TEST(DumpText, reportsAWrongOffset)
{
    EXPECT_EQ(faultOf({"00  0A 0B", "03  0A"}), "line 12: offset 03 where 02 is due");
    EXPECT_EQ(faultOf({"01  0A"}), "line 11: offset 01 where 00 is due");
    EXPECT_EQ(faultOf({"00  \"abc\"", "02  0A"}), "line 12: offset 02 where 03 is due");
    EXPECT_EQ(faultOf({"00  \xE2\x80\xA6 20 bytes", "13  0A"}),
              "line 12: offset 13 where 14 is due");
}

TEST(DumpText, reportsALineWithoutAnOffset)
{
    for (const char* line : {"", "0  0A", "0x00  0A", " 00  0A", "00 0A", "mark"})
        EXPECT_EQ(faultOf({line}), "line 11: no offset") << line;
}

TEST(DumpText, reportsALineWithoutBytes)
{
    for (const char* line :
         {"00", "00  ", "00  mark", "00  0a", "00  A", "00  0A mark", "00  0A0B", "00  0A ? ?",
          "00  \"\"", "00  \"abc", "00  \"a\"0A", "00  \xE2\x80\xA6", "00  \xE2\x80\xA6 bytes",
          "00  \xE2\x80\xA6 0 bytes", "00  \xE2\x80\xA6 x bytes", "00  \xE2\x80\xA6 some"})
        EXPECT_EQ(faultOf({line}), "line 11: no bytes") << line;
}

TEST(DumpText, reportsARowAfterTheRest)
{
    EXPECT_EQ(faultOf({"00  \xE2\x80\xA6 any", "00  0A"}), "line 12: a row after the rest");
}

TEST(DumpText, reportsAMissingNameOrRows)
{
    const std::string fault = "line 10: a dump without a name or without rows";
    EXPECT_EQ(faultOf({}), fault);
    EXPECT_EQ(parseDump({"dump", "", 10, {"00  0A"}}).fault, fault);
}
