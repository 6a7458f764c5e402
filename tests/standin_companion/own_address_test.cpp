// Whom the Companion's port listens to.
#include "peer/own_address.h"

#include <gtest/gtest.h>

using namespace companion;

namespace {

constexpr std::uint32_t address(unsigned a, unsigned b, unsigned c, unsigned d)
{
    return a << 24 | b << 16 | c << 8 | d;
}

constexpr std::uint32_t own = address(192, 168, 1, 20);

} // namespace

TEST(OwnAddress, isTheOneThatTheConnectionCameTo)
{
    EXPECT_TRUE(isOwnAddress(own, own));
    EXPECT_FALSE(isOwnAddress(address(192, 168, 1, 21), own));
    EXPECT_FALSE(isOwnAddress(address(10, 0, 0, 1), own));
    EXPECT_FALSE(isOwnAddress(address(1, 0, 0, 127), own));
}

TEST(OwnAddress, isAnyOfTheLoopbacks)
{
    EXPECT_TRUE(isOwnAddress(address(127, 0, 0, 1), address(127, 0, 0, 1)));
    EXPECT_TRUE(isOwnAddress(address(127, 0, 0, 2), address(127, 0, 0, 1)));
    EXPECT_TRUE(isOwnAddress(address(127, 255, 255, 254), own));
    EXPECT_FALSE(isOwnAddress(address(126, 255, 255, 255), own));
    EXPECT_FALSE(isOwnAddress(address(128, 0, 0, 1), own));
    EXPECT_FALSE(isOwnAddress(own, address(127, 0, 0, 1)));
}
