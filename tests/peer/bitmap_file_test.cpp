#include "peer/bitmap_file.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace peer;
using namespace std::string_literals;

namespace {

using Values = std::vector<std::uint32_t>;

std::string number(std::uint32_t value, int size = 4)
{
    std::string bytes;
    for (int i = 0; i < size; ++i)
        bytes += static_cast<char>(value >> (8 * i) & 0xFF);
    return bytes;
}

// The headers of a bitmap file, with fields that tests set to invalid values.
struct Headers {
    std::string mark = "BM";
    std::uint32_t information = 40;
    std::uint32_t width = 3, height = 2;
    std::uint32_t planes = 1, bits = 32, compression = 0, colours = 0;
    std::uint32_t offset = 54;
};

std::string file(const Headers& h, const std::string& rest)
{
    return h.mark + number(0) + number(0) + number(h.offset) + number(h.information) +
           number(h.width) + number(h.height) + number(h.planes, 2) + number(h.bits, 2) +
           number(h.compression) + number(0) + number(0) + number(0) + number(h.colours) +
           number(0) + rest;
}

// Two rows of three pixels, the lower one first.
const std::string rows32 = "\1\0\0\0\2\0\0\0\3\0\0\0\x33\x22\x11\xFF\5\0\0\0\6\0\0\0"s;

bool isNone(const std::string& bytes)
{
    const Pixels picture = parseBitmap(bytes);
    return picture.width == 0 && picture.height == 0 && picture.values.empty();
}

} // namespace

TEST(PeerBitmapFile, is32BitsFromTheBottomUp)
{
    const Pixels picture = parseBitmap(file({}, rows32));
    EXPECT_EQ(picture.width, 3);
    EXPECT_EQ(picture.height, 2);
    EXPECT_EQ(picture.values, (Values{0x112233, 5, 6, 1, 2, 3}));
}

TEST(PeerBitmapFile, negativeHeightIsTopDown)
{
    Headers headers;
    headers.height = 0xFFFFFFFE;
    const Pixels picture = parseBitmap(file(headers, rows32));
    EXPECT_EQ(picture.height, 2);
    EXPECT_EQ(picture.values, (Values{1, 2, 3, 0x112233, 5, 6}));
}

TEST(PeerBitmapFile, rowsArePaddedToFourBytes)
{
    Headers headers;
    headers.bits = 24;
    const Pixels picture = parseBitmap(file(headers, "\1\0\0\2\0\0\3\0\0---"
                                                     "\x33\x22\x11\5\0\0\6\0\0---"s));
    EXPECT_EQ(picture.values, (Values{0x112233, 5, 6, 1, 2, 3}));
}

TEST(PeerBitmapFile, oneBitUsesTheColourTable)
{
    Headers headers;
    headers.bits = 1;
    headers.width = 10;
    headers.height = 1;
    headers.offset = 62;
    const std::string table = "\1\2\3\0\4\5\6\0"s;
    const Pixels picture = parseBitmap(file(headers, table + "\x81\x40--"));
    constexpr std::uint32_t off = 0x030201, on = 0x060504;
    EXPECT_EQ(picture.values, (Values{on, off, off, off, off, off, off, on, off, on}));
}

TEST(PeerBitmapFile, fourAndEightBitsUseTheColourTable)
{
    Headers headers;
    headers.bits = 4;
    headers.height = 1;
    headers.colours = 2;
    headers.offset = 62;
    const std::string table = "\x0A\0\0\0\x0B\0\0\0"s;
    EXPECT_EQ(parseBitmap(file(headers, table + "\x10\x1F--"s)).values, (Values{11, 10, 11}));
    headers.bits = 8;
    // An index past the end of the colour table is black.
    EXPECT_EQ(parseBitmap(file(headers, table + "\1\2\0-"s)).values, (Values{11, 0, 10}));
}

TEST(PeerBitmapFile, mayHaveALongHeaderAndAGap)
{
    Headers headers;
    headers.information = 108;
    headers.offset = 130;
    EXPECT_EQ(parseBitmap(file(headers, std::string(76, 'x') + rows32)).values,
              (Values{0x112233, 5, 6, 1, 2, 3}));
}

TEST(PeerBitmapFile, isRejectedWhenCutShort)
{
    const std::string whole = file({}, rows32);
    for (size_t size = 0; size < whole.size(); ++size)
        EXPECT_TRUE(isNone(whole.substr(0, size))) << size;
    EXPECT_FALSE(isNone(whole + "more"));
}

TEST(PeerBitmapFile, isRejectedWithWrongHeaders)
{
    Headers claimed;
    claimed.width = claimed.height = 4000;
    claimed.bits = 24;
    EXPECT_TRUE(isNone(file(claimed, "abcd")));
    struct Wrong {
        const char* what;
        std::uint32_t Headers::*field;
        std::uint32_t value;
    };
    const Wrong all[] = {
        {"width", &Headers::width, 0},
        {"width", &Headers::width, 4},
        {"width", &Headers::width, 0xFFFFFFFF},
        {"width", &Headers::width, 0x7FFFFFFF},
        {"width", &Headers::width, 0x80000000},
        {"width", &Headers::width, 0x40000003},
        {"height", &Headers::height, 0},
        {"height", &Headers::height, 3},
        {"height", &Headers::height, 0xFFFFFFFD},
        {"height", &Headers::height, 0x7FFFFFFF},
        {"height", &Headers::height, 0x80000000},
        {"planes", &Headers::planes, 0},
        {"planes", &Headers::planes, 2},
        {"bits", &Headers::bits, 0},
        {"bits", &Headers::bits, 2},
        {"bits", &Headers::bits, 8}, // no space for its colour table
        {"bits", &Headers::bits, 16},
        {"bits", &Headers::bits, 64},
        {"compression", &Headers::compression, 1},
        {"compression", &Headers::compression, 3},
        {"information", &Headers::information, 0},
        {"information", &Headers::information, 12},
        {"information", &Headers::information, 41},
        {"information", &Headers::information, 0xFFFFFFFF},
        {"offset", &Headers::offset, 0},
        {"offset", &Headers::offset, 53},
        {"offset", &Headers::offset, 55},
        {"offset", &Headers::offset, 0xFFFFFFFF},
    };
    for (const Wrong& wrong : all) {
        Headers headers;
        headers.*wrong.field = wrong.value;
        EXPECT_TRUE(isNone(file(headers, rows32))) << wrong.what << ' ' << wrong.value;
    }
    Headers unmarked;
    unmarked.mark = "BA";
    EXPECT_TRUE(isNone(file(unmarked, rows32)));
}

TEST(PeerBitmapFile, isRejectedWhenTableOverlapsRows)
{
    Headers headers;
    headers.bits = 8;
    headers.colours = 2;
    headers.offset = 61;
    EXPECT_TRUE(isNone(file(headers, std::string(100, 'x'))));
    headers.colours = 0xFFFFFFFF;
    EXPECT_TRUE(isNone(file(headers, std::string(100, 'x'))));
}

TEST(PeerBitmapFile, isRejectedWithTooManyPixels)
{
    Headers headers;
    headers.bits = 1;
    headers.colours = 2;
    headers.offset = 62;
    headers.width = 8192;
    headers.height = 4097;
    EXPECT_TRUE(isNone(file(headers, std::string(8 + 4097 * 1024, '\0'))));
    headers.height = 4096;
    EXPECT_FALSE(isNone(file(headers, std::string(8 + 4096 * 1024, '\0'))));
}
