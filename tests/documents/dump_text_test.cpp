#include "documents/dump_text.h"

#include <gtest/gtest.h>

using namespace documents;

namespace {

using Lines = std::vector<std::string>;

ReadDump read(const Lines& lines)
{
    return readDump({"dump", "x", 10, lines});
}

std::string faultOf(const Lines& lines)
{
    return read(lines).fault;
}

const Lines everyForm = {
    "00  EF BB ??                 mark  of three",
    "03  \"17  C:\\a.mcam\"         request",
    "10  0A",
    "11  \xE2\x80\xA6 256 bytes              pixels",
    "111  \xE2\x80\xA6 any",
};

} // namespace

TEST(DumpText, givesTheBytesWithTheirAnnotations)
{
    const ReadDump dump = read(everyForm);
    EXPECT_EQ(dump.fault, "");
    ASSERT_EQ(dump.dump.rows.size(), 5u);
    const std::vector<DumpRow>& rows = dump.dump.rows;
    using Bytes = std::vector<std::optional<char>>;
    EXPECT_EQ(rows[0].bytes, (Bytes{'\xEF', '\xBB', std::nullopt}));
    EXPECT_EQ(rows[0].annotation, "mark  of three");
    EXPECT_EQ(rows[1].kind, DumpRow::Kind::text);
    EXPECT_EQ(rows[1].size(), 13u);
    EXPECT_EQ(rows[1].annotation, "request");
    EXPECT_EQ(rows[2].annotation, "");
    EXPECT_EQ(rows[3].leftOut, 256u);
    EXPECT_EQ(rows[4].kind, DumpRow::Kind::rest);
}

TEST(DumpText, isWrittenWithItsColumnsInLine)
{
    EXPECT_EQ(asBlock(read(everyForm).dump), "```dump x\n"
                                             "000  EF BB ??         mark  of three\n"
                                             "003  \"17  C:\\a.mcam\"  request\n"
                                             "010  0A\n"
                                             "011  \xE2\x80\xA6 256 bytes      pixels\n"
                                             "111  \xE2\x80\xA6 any\n"
                                             "```\n");
}

TEST(DumpText, isReadAgainAsItIsWritten)
{
    const Dump dump = read(everyForm).dump;
    const auto blocks = fencedBlocks(asBlock(dump), "dump");
    ASSERT_EQ(blocks.size(), 1u);
    EXPECT_EQ(readDump(blocks[0]).dump, dump);
}

TEST(DumpText, tellsOfAnOffsetThatIsNotDue)
{
    EXPECT_EQ(faultOf({"00  0A 0B", "03  0A"}), "line 12: offset 03 where 02 is due");
    EXPECT_EQ(faultOf({"01  0A"}), "line 11: offset 01 where 00 is due");
    EXPECT_EQ(faultOf({"00  \"abc\"", "02  0A"}), "line 12: offset 02 where 03 is due");
    EXPECT_EQ(faultOf({"00  \xE2\x80\xA6 20 bytes", "13  0A"}),
              "line 12: offset 13 where 14 is due");
}

TEST(DumpText, tellsOfALineWithoutAnOffset)
{
    for (const char* line : {"", "0  0A", "0x00  0A", " 00  0A", "00 0A", "mark"})
        EXPECT_EQ(faultOf({line}), "line 11: no offset") << line;
}

TEST(DumpText, tellsOfALineWithoutBytes)
{
    for (const char* line :
         {"00", "00  ", "00  mark", "00  0a", "00  A", "00  0A mark", "00  0A0B", "00  0A ? ?",
          "00  \"\"", "00  \"abc", "00  \"a\"0A", "00  \xE2\x80\xA6", "00  \xE2\x80\xA6 bytes",
          "00  \xE2\x80\xA6 0 bytes", "00  \xE2\x80\xA6 x bytes", "00  \xE2\x80\xA6 some"})
        EXPECT_EQ(faultOf({line}), "line 11: no bytes") << line;
}

TEST(DumpText, tellsOfARowBehindTheRest)
{
    EXPECT_EQ(faultOf({"00  \xE2\x80\xA6 any", "00  0A"}), "line 12: a row behind the rest");
}

TEST(DumpText, tellsOfADumpWithoutANameOrWithoutRows)
{
    const std::string fault = "line 10: a dump without a name or without rows";
    EXPECT_EQ(faultOf({}), fault);
    EXPECT_EQ(readDump({"dump", "", 10, {"00  0A"}}).fault, fault);
}
