#include "formats/checkout_answer.h"

#include <gtest/gtest.h>

using namespace torvapdm;

namespace {

// The number in the file name for this time.
std::wstring numberAt(std::int64_t seconds)
{
    const std::wstring before = L"\\TORVA ZEM-";
    const std::wstring name = formatAnswerPath(L"", seconds);
    EXPECT_EQ(name.substr(0, before.size()), before);
    EXPECT_EQ(name.substr(name.size() - 4), L".tmp");
    return name.substr(before.size(), name.size() - before.size() - 4);
}

} // namespace

TEST(ExchangeFileName, hasADoubledBackslash)
{
    EXPECT_EQ(formatAnswerPath(L"C:\\Temp\\", 1), L"C:\\Temp\\\\TORVA ZEM-25661.tmp");
}

TEST(ExchangeFileName, isNumberedByTheTimesLowBits)
{
    EXPECT_EQ(numberAt(1), L"25661");
    EXPECT_EQ(numberAt(2), L"51322");
    EXPECT_EQ(numberAt(3), L"11447");
    EXPECT_EQ(numberAt(1795000000), L"7104");
    EXPECT_EQ(numberAt(-1), L"39875");
    EXPECT_EQ(numberAt(33465965418), L"61506"); // the product overflows 63 bits
}

TEST(ExchangeFileName, hasNoLeadingZeros)
{
    EXPECT_EQ(numberAt(0), L"0");
    EXPECT_EQ(numberAt(17811), L"7");
}
