#include "peer/settings_file.h"

#include <gtest/gtest.h>

using namespace peer;

TEST(PeerSetting, isTheLastLineWithTheKey)
{
    const auto value = [](std::string_view bytes) {
        return findSetting(splitSettingLines(bytes), "UseFtpServer");
    };
    EXPECT_EQ(value("UseFtpServer=y\r\nXUseFtpServer=n\r\n"), "n");
    EXPECT_EQ(value("UseFtpServer=y"), "");
    EXPECT_EQ(value("UseFtpServer=y\nUseFtpServer\n"), "y");
    EXPECT_EQ(value("UseFtpServer=y\n\x1AUseFtpServer=n\n"), "y");
    EXPECT_EQ(value("useftpserver=y\n"), "");
}

TEST(PeerSettingLines, areAtMost1023Bytes)
{
    const std::string longLine = std::string(1023, ' ') + "UseFtpServer=y\n";
    EXPECT_EQ(splitSettingLines(longLine).size(), 2u);
    EXPECT_EQ(splitSettingLines("a\r\n\r\nb"), (std::vector<std::string>{"a\n", "\n", "b"}));
}

TEST(PeerSettings, haveTheirOwnRules)
{
    struct Row {
        const char* bytes;
        bool ftp, tools, catia, nc;
    };
    const Row rows[] = {
        {"", false, false, false, true},
        {"AlwaysSaveTools=Y\nMCXIMPORTNC=n\nMCXIMPORTNC=Y\nUseFtpServer=yes\n", false, false, false,
         true},
        {"AlwaysSaveTools=yes\nMCXIMPORTNC=Y MCXIMPORTNC=n\nUseFtpServer=Y\nMCXCATIA=y\n", true,
         true, true, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.bytes);
        const Settings settings = parseSettings(row.bytes);
        EXPECT_EQ(settings.useFtpServer, row.ftp);
        EXPECT_EQ(settings.alwaysSaveTools, row.tools);
        EXPECT_EQ(settings.catia, row.catia);
        EXPECT_EQ(settings.importNc, row.nc);
    }
}
