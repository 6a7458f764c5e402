#include "formats/record_text.h"

#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <limits>
#include <locale>

using namespace torvapdm;

namespace {

template <class Value>
std::string written(Value value)
{
    RecordText record;
    put(record, "|K=", value);
    return contentOf(record).value_or("too long").substr(3);
}

// By the C++ library: not every C library's printf rounds a half to even.
std::string printed(double value)
{
    char text[32];
    return {text, std::to_chars(text, std::end(text), value, std::chars_format::general, 6).ptr};
}

} // namespace

TEST(RecordText, writesIntegersInDecimal)
{
    EXPECT_EQ(written(0), "0");
    EXPECT_EQ(written(-7), "-7");
    EXPECT_EQ(written(1234567), "1234567");
    EXPECT_EQ(written(std::numeric_limits<std::int32_t>::max()), "2147483647");
    EXPECT_EQ(written(std::numeric_limits<std::int32_t>::min()), "-2147483648");
    EXPECT_EQ(written(std::numeric_limits<std::int16_t>::min()), "-32768");
    EXPECT_EQ(written(std::numeric_limits<std::int16_t>::max()), "32767");
}

TEST(RecordText, writesSixSignificantDigits)
{
    struct Case {
        double value;
        const char* text;
    };
    const Case cases[] = {
        {0, "0"},
        {-0.0, "-0"},
        {10, "10"},
        {12, "12"},
        {0.1, "0.1"},
        {-0.5, "-0.5"},
        {3.14159265, "3.14159"},
        {0.0001, "0.0001"},
        {0.00012345678, "0.000123457"},
        {0.00009999994, "9.99999e-05"},
        {0.00009999996, "0.0001"},
        {0.00001, "1e-05"},
        {0.000001, "1e-06"},
        {2.5e-7, "2.5e-07"},
        {99999.96, "100000"},
        {123456.7, "123457"},
        {100000.5, "100000"},
        {100001.5, "100002"},
        {999999, "999999"},
        {999999.4, "999999"},
        {999999.5, "1e+06"},
        {999999.6, "1e+06"},
        {1000000, "1e+06"},
        {2500000, "2.5e+06"},
        {-1.7976931348623157e308, "-1.79769e+308"},
        {5e-324, "4.94066e-324"},
        {std::numeric_limits<double>::infinity(), "inf"},
        {-std::numeric_limits<double>::infinity(), "-inf"},
        {std::numeric_limits<double>::quiet_NaN(), "nan"},
        {std::copysign(std::numeric_limits<double>::quiet_NaN(), -1.0), "-nan"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(written(c.value), c.text);
}

TEST(RecordText, agreesWithTheLibrary)
{
    for (const int digits : {1, 15, 100005, 123456, 1000005, 1234565, 9999985, 9999995})
        for (int place = -14; place <= 2; ++place) {
            const double value = digits * std::pow(10, place);
            for (const double tried : {std::nextafter(value, 0), value, std::nextafter(value, 1e9)})
                EXPECT_EQ(written(tried), printed(tried));
        }
}

TEST(RecordText, ignoresTheLocale)
{
    struct Comma : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        std::string do_grouping() const override { return "\3"; }
    };
    const std::locale before = std::locale::global(std::locale(std::locale(), new Comma));
    EXPECT_EQ(written(1234.5), "1234.5");
    EXPECT_EQ(written(1234567), "1234567");
    std::locale::global(before);
}

TEST(RecordText, writesAnAddressAs16HexDigits)
{
    EXPECT_EQ(written(reinterpret_cast<const wchar_t*>(0x000002A1F3C05E40)), "000002A1F3C05E40");
    EXPECT_EQ(written(static_cast<const wchar_t*>(nullptr)), "0000000000000000");
    EXPECT_EQ(written(reinterpret_cast<const wchar_t*>(~std::uintptr_t{0})), "FFFFFFFFFFFFFFFF");
}

TEST(RecordText, writesTheLowByteOfEachUnit)
{
    RecordText record;
    putLowBytes(record, L"a|\n\u00C4\u20AC");
    EXPECT_EQ(contentOf(record), "a|\n\xC4\xAC");
}

TEST(RecordText, endsATextAtAZeroLowByte)
{
    RecordText record;
    putLowBytes(record, L"b\u4E00c");
    put(record, "|next");
    EXPECT_EQ(contentOf(record), "b|next");
}

TEST(RecordText, holds2047CharactersAndNoMore)
{
    RecordText record;
    put(record, std::string(2047, 'x'));
    EXPECT_EQ(contentOf(record), std::string(2047, 'x'));
    put(record, "");
    EXPECT_TRUE(contentOf(record).has_value());
    put(record, "y");
    EXPECT_EQ(contentOf(record), std::nullopt);
}

TEST(RecordText, staysTooLong)
{
    RecordText record;
    put(record, std::string(2000, 'x'));
    putLowBytes(record, std::wstring(48, L'c'));
    put(record, "y");
    EXPECT_EQ(contentOf(record), std::nullopt);
}
