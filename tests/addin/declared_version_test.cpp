#include "addin/exports.h"

#include <gtest/gtest.h>

using torvapdm::declaredVersion;

TEST(DeclaredVersion, echoesHostsOfReleases11And21)
{
    for (const int version : {1100, 1105, 1199, 2100, 2150, 2199})
        EXPECT_EQ(declaredVersion(version), version);
}

TEST(DeclaredVersion, is2100ForEveryOtherHost)
{
    for (const int version :
         {0, 1, 1000, 1099, 1200, 2099, 2200, -1100, -2100, -1, 2147483647, -2147483647 - 1})
        EXPECT_EQ(declaredVersion(version), 2100) << version;
}
