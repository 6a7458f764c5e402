#include "documents/dump.h"
#include "documents/dump_text.h"

#include <gtest/gtest.h>

using namespace documents;

namespace {

Dump dumpOf(const std::vector<std::string>& lines)
{
    const ReadDump read = readDump({"dump", "x", 0, lines});
    EXPECT_EQ(read.fault, "");
    return read.dump;
}

// The lines of the dump as it should stand.
std::vector<std::string> linesShowing(std::string_view bytes, const Dump& dump)
{
    return fencedBlocks(asBlock(showing(bytes, dump)), "dump").at(0).lines;
}

using Lines = std::vector<std::string>;

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

TEST(Dump, takesAnyByteWhereItSaysSo)
{
    const Dump dump = dumpOf({"00  41 ?? 43  a byte that differs"});
    EXPECT_TRUE(isShown("ABC", dump));
    EXPECT_TRUE(isShown(std::string("A\0C", 3), dump));
    EXPECT_FALSE(isShown("ABD", dump));
    EXPECT_FALSE(isShown("AB", dump));
}

TEST(Dump, leavesOutAsManyBytesAsItSays)
{
    const Dump dump = dumpOf({"00  41", "01  \xE2\x80\xA6 3 bytes  pixels", "04  42"});
    EXPECT_TRUE(isShown("A123B", dump));
    EXPECT_FALSE(isShown("A12B", dump));
    EXPECT_FALSE(isShown("A1234B", dump));
    EXPECT_FALSE(isShown("A123", dump));
}

TEST(Dump, leavesOutTheRestHoweverLong)
{
    const Dump dump = dumpOf({"00  41", "01  \xE2\x80\xA6 any"});
    EXPECT_TRUE(isShown("A", dump));
    EXPECT_TRUE(isShown("A123", dump));
    EXPECT_FALSE(isShown("", dump));
}

TEST(Dump, standsWithWhatHasChangedInPlaceOfWhatItShowed)
{
    EXPECT_EQ(linesShowing("\xEF\xBB\xBF"
                           "230 C:\\a\n",
                           request),
              (Lines{"00  EF BB BF  mark", "03  \"230\"     id", "06  20", "07  \"C:\\a\"    path",
                     "0B  0A        end"}));
}

TEST(Dump, standsWithoutWhatIsNoLongerThere)
{
    EXPECT_EQ(linesShowing("17 C:\\a", request),
              (Lines{"00  \"17\"    id", "02  20", "03  \"C:\\a\"  path"}));
}

TEST(Dump, standsWithWhatItLacksAtItsEnd)
{
    const Dump dump = dumpOf({"00  41  a"});
    const std::string bytes = std::string("A\1\2abc\r\n", 8) + "NCPATH|3" + std::string(18, '\0');
    EXPECT_EQ(linesShowing(bytes, dump),
              (Lines{"00  41                                               a",
                     "01  01 02 61 62 63 0D 0A", "08  \"NCPATH|3\"",
                     "10  00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00", "20  00 00"}));
    EXPECT_EQ(linesShowing('A' + std::string(70, 'x'), dump),
              (Lines{"00  41                                                                  a",
                     "01  \"" + std::string(64, 'x') + '"', "41  \"xxxxxx\""}));
}

TEST(Dump, standsInHexadecimalWhereTextIsNone)
{
    EXPECT_EQ(linesShowing("a\tb", dumpOf({"00  \"abc\"  word"})), Lines{"00  61 09 62  word"});
    EXPECT_EQ(linesShowing("a\"b", dumpOf({"00  \"abc\"  word"})), Lines{"00  61 22 62  word"});
}

TEST(Dump, goesOnTakingAnyByteWhereItsRowHasChanged)
{
    EXPECT_EQ(linesShowing("AxD", dumpOf({"00  41 ?? 43  word"})), Lines{"00  41 ?? 44  word"});
}

TEST(Dump, leavesOutMoreOrLessWhenThatHasChanged)
{
    const Dump dump = dumpOf({"00  41", "01  \xE2\x80\xA6 3 bytes  pixels", "04  42 43"});
    EXPECT_EQ(linesShowing("A12345BC", dump),
              (Lines{"00  41", "01  \xE2\x80\xA6 5 bytes  pixels", "06  42 43"}));
}

TEST(Dump, givesItsBytesUnlessSomeAreLeftOut)
{
    EXPECT_EQ(bytesOf(dumpOf({"00  41 ??", "02  \"b\""})), "A0b");
    EXPECT_EQ(bytesOf(dumpOf({"00  41", "01  \xE2\x80\xA6 3 bytes"})), std::nullopt);
    EXPECT_EQ(bytesOf(dumpOf({"00  41", "01  \xE2\x80\xA6 any"})), std::nullopt);
}
