#include "formats/settings_file.h"

#include <gtest/gtest.h>

using namespace torvapdm;

namespace {

std::string after(std::string_view line, std::string_view identifier = "UseFtpServer",
                  const char* before = "before")
{
    std::string value = before;
    applySettingLine(line, identifier, value);
    return value;
}

} // namespace

TEST(SettingsLine, dropsTheLastCharacterOfItsValue)
{
    EXPECT_EQ(after("UseFtpServer=y\n"), "y");
    EXPECT_EQ(after("UseFtpServer=a=b\n"), "a=b");
    EXPECT_EQ(after("UseFtpServer= y \n"), " y ");
    EXPECT_EQ(after("UseFtpServer=\n"), "");
}

TEST(SettingsLine, losesAByteWithoutALineFeed)
{
    EXPECT_EQ(after("UseFtpServer=y"), "");
    EXPECT_EQ(after("UseFtpServer=yes"), "ye");
    EXPECT_EQ(after("UseFtpServer="), "");
}

TEST(SettingsLine, matchesAnywhereAndByCase)
{
    EXPECT_EQ(after("XUseFtpServer=n\n"), "n");
    EXPECT_EQ(after("a=b UseFtpServer\n"), "b UseFtpServer");
    EXPECT_EQ(after("useftpserver=n\n"), "before");
    EXPECT_EQ(after("UseFtpServe=n\n"), "before");
}

TEST(SettingsLine, needsAnEqualsSign)
{
    EXPECT_EQ(after("UseFtpServer y\n"), "before");
}

TEST(SettingsLine, matchesTheEmptyIdentifier)
{
    EXPECT_EQ(after("a=b\n", ""), "b");
}
