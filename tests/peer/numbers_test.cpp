#include "peer/numbers.h"

#include <gtest/gtest.h>

using namespace peer;

TEST(PeerNumbers, areCompleteAndInRange)
{
    EXPECT_EQ(parseNumber(L"-12", -12, 5), -12);
    EXPECT_EQ(parseNumber(L"005", 0, 5), 5);
    EXPECT_EQ(parseNumber(L"999999999999999", 0, 999999999999999), 999999999999999);
    for (const wchar_t* text : {L"", L"-", L"6", L"-13", L" 1", L"1 ", L"+1", L"1.0", L"0x1",
                                L"--1", L"1000000000000000", L"\u0661"})
        EXPECT_EQ(parseNumber(text, -12, 5), std::nullopt) << text;
}

TEST(PeerDecimals, haveSixSignificantDigits)
{
    for (const auto& [number, text] : std::initializer_list<std::pair<double, const char*>>{
             {10, "10"},
             {0.1, "0.1"},
             {-0.5, "-0.5"},
             {2.5e6, "2.5e+06"},
             {1e-6, "1e-06"},
             {123456.7, "123457"},
             {0.0001, "0.0001"},
             {-1.2345678e-300, "-1.23457e-300"}}) {
        EXPECT_EQ(formatDecimal(number), text);
        EXPECT_TRUE(parsePrintedDecimal(text).has_value()) << text;
    }
}
