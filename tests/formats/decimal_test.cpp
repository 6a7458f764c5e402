#include "formats/decimal.h"

#include <gtest/gtest.h>

using namespace torvapdm;

TEST(DecimalNumber, endsAtTheFirstNonDigit)
{
    EXPECT_EQ(decimalNumber("12"), 12);
    EXPECT_EQ(decimalNumber("12x3"), 12);
    EXPECT_EQ(decimalNumber("007"), 7);
    EXPECT_EQ(decimalNumber("5.9"), 5);
}

TEST(DecimalNumber, acceptsWhiteSpaceAndOneSign)
{
    EXPECT_EQ(decimalNumber(" \t\r\n\v\f-12"), -12);
    EXPECT_EQ(decimalNumber("+12"), 12);
    EXPECT_EQ(decimalNumber("-0"), 0);
}

TEST(DecimalNumber, isEmptyWithoutDigits)
{
    for (const char* text : {"", " ", "-", "+", "--1", "+-1", "- 1", "x1",
                             "\xEF\xBB\xBF"
                             "1"})
        EXPECT_EQ(decimalNumber(text), std::nullopt) << text;
}

TEST(DecimalNumber, isEmptyOutside32Bits)
{
    EXPECT_EQ(decimalNumber("2147483647"), 2147483647);
    EXPECT_EQ(decimalNumber("-2147483648"), -2147483647 - 1);
    EXPECT_EQ(decimalNumber("2147483648"), std::nullopt);
    EXPECT_EQ(decimalNumber("-2147483649"), std::nullopt);
    EXPECT_EQ(decimalNumber(std::string(5000, '9')), std::nullopt);
}

TEST(DecimalOrZero, isClampedTo32Bits)
{
    EXPECT_EQ(decimalOrZero(L" -17mm"), -17);
    EXPECT_EQ(decimalOrZero(L""), 0);
    EXPECT_EQ(decimalOrZero(L"x"), 0);
    EXPECT_EQ(decimalOrZero(L"2147483648"), 2147483647);
    EXPECT_EQ(decimalOrZero(L"-99999999999999999999"), -2147483647 - 1);
}
