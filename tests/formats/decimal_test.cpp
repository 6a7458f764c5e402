#include "formats/decimal.h"

#include <gtest/gtest.h>

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

TEST(DecimalOrZero, isClampedTo32Bits)
{
    EXPECT_EQ(parseDecimalOrZero(L" -17mm"), -17);
    EXPECT_EQ(parseDecimalOrZero(L""), 0);
    EXPECT_EQ(parseDecimalOrZero(L"x"), 0);
    EXPECT_EQ(parseDecimalOrZero(L"2147483648"), 2147483647);
    EXPECT_EQ(parseDecimalOrZero(L"-99999999999999999999"), -2147483647 - 1);
}
