#include "formats/decimal.h"

#include <bit>
#include <gtest/gtest.h>
#include <windows.h>

using namespace torvapdm;

TEST(DecimalNumber, endsAtTheFirstNonDigit)
{
    EXPECT_EQ(parseDecimal("12"), 12);
    EXPECT_EQ(parseDecimal("12x3"), 12);
    EXPECT_EQ(parseDecimal("007"), 7);
    EXPECT_EQ(parseDecimal("5.9"), 5);
}

TEST(DecimalNumber, acceptsWhiteSpaceAndOneSign)
{
    EXPECT_EQ(parseDecimal(" \t\r\n\v\f-12"), -12);
    EXPECT_EQ(parseDecimal("+12"), 12);
    EXPECT_EQ(parseDecimal("-0"), 0);
}

TEST(DecimalNumber, isEmptyWithoutDigits)
{
    for (const char* text : {"", " ", "-", "+", "--1", "+-1", "- 1", "x1",
                             "\xEF\xBB\xBF"
                             "1"})
        EXPECT_EQ(parseDecimal(text), std::nullopt) << text;
}

TEST(DecimalNumber, isEmptyOutside32Bits)
{
    EXPECT_EQ(parseDecimal("2147483647"), 2147483647);
    EXPECT_EQ(parseDecimal("-2147483648"), -2147483647 - 1);
    EXPECT_EQ(parseDecimal("2147483648"), std::nullopt);
    EXPECT_EQ(parseDecimal("-2147483649"), std::nullopt);
    EXPECT_EQ(parseDecimal(std::string(5000, '9')), std::nullopt);
}

// That of the current C runtime, since an older one does not skip U+0085.
TEST(DecimalOrZero, readsEveryUnitAsTheRuntimeDoes)
{
    const auto runtimes = std::bit_cast<int (*)(const wchar_t*)>(
        GetProcAddress(LoadLibraryW(L"ucrtbase.dll"), "_wtoi"));
    ASSERT_TRUE(runtimes);
    for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
        const auto c = static_cast<wchar_t>(unit);
        for (const std::wstring& text :
             {std::wstring(1, c) + L"7", L"1" + std::wstring(1, c) + L"3",
              L"-" + std::wstring(1, c) + L"5"})
            ASSERT_EQ(parseDecimalOrZero(text), runtimes(text.c_str())) << std::hex << unit;
    }
}

TEST(DecimalOrZero, acceptsSpacesAndDigitsOutsideAscii)
{
    EXPECT_EQ(parseDecimalOrZero(L"\u00A0\u3000\u2003-\uFF11\u0662x"), -12);
    EXPECT_EQ(parseDecimal("\xA0"
                           "5"),
              std::nullopt); // only as UTF-16
}

TEST(DecimalOrZero, isClampedTo32Bits)
{
    EXPECT_EQ(parseDecimalOrZero(L" -17mm"), -17);
    EXPECT_EQ(parseDecimalOrZero(L""), 0);
    EXPECT_EQ(parseDecimalOrZero(L"x"), 0);
    EXPECT_EQ(parseDecimalOrZero(L"2147483648"), 2147483647);
    EXPECT_EQ(parseDecimalOrZero(L"-99999999999999999999"), -2147483647 - 1);
}
