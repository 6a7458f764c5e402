#include "toolpicture/numbers.h"

#include "support/special_numbers.h"

#include <gtest/gtest.h>
#include <numbers>

using namespace torvapdm;
using namespace testing_support;

TEST(Truncated, dropsTheFractionTowardsZero)
{
    EXPECT_EQ(truncated(0), 0);
    EXPECT_EQ(truncated(0.999), 0);
    EXPECT_EQ(truncated(-0.999), 0);
    EXPECT_EQ(truncated(7.0), 7);
    EXPECT_EQ(truncated(7.999), 7);
    EXPECT_EQ(truncated(-7.999), -7);
    EXPECT_EQ(truncated(134217726.5), 134217726);
}

TEST(Truncated, endsAtTheFarthestPixelOnEitherSide)
{
    for (const double beyond : {134217727.0, 134217728.0, 2147483648.0, 1e300, infinity}) {
        EXPECT_EQ(truncated(beyond), 134217727);
        EXPECT_EQ(truncated(-beyond), -134217727);
    }
}

TEST(Truncated, isZeroForNaN)
{
    EXPECT_EQ(truncated(notANumber), 0);
    EXPECT_EQ(truncated(-notANumber), 0);
}

TEST(ClampInt, keepsTheValueBetweenItsBounds)
{
    EXPECT_EQ(clampInt(1, 2, 5), 2);
    EXPECT_EQ(clampInt(2, 2, 5), 2);
    EXPECT_EQ(clampInt(4, 2, 5), 4);
    EXPECT_EQ(clampInt(5, 2, 5), 5);
    EXPECT_EQ(clampInt(6, 2, 5), 5);
}

TEST(ClampInt, prefersTheLowerBound)
{
    EXPECT_EQ(clampInt(1, 2, -4), 2);
    EXPECT_EQ(clampInt(2, 2, -4), -4);
    EXPECT_EQ(clampInt(9, 2, -4), -4);
}

TEST(Radians, arePiOver180PerDegree)
{
    EXPECT_EQ(radians(0), 0);
    EXPECT_EQ(radians(180), std::numbers::pi);
    EXPECT_EQ(radians(90), std::numbers::pi / 2);
    EXPECT_EQ(radians(-45), -std::numbers::pi / 4);
}
