#include "companion/settings.h"

#include "dormant/dormant.h"
#include "formats/settings_file.h"
#include "support/bytes.h"
#include "support/installation.h"
#include "companion/installation.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <windows.h>

using namespace torvapdm;
using namespace testing_support;

namespace {

class Settings : public ::testing::Test {
protected:
    Settings() { installation.endStandardInput(); }

    void write(std::string_view bytes) { writeBytes(settingsFilePath(), bytes); }

    std::string restOfStandardInput()
    {
        std::string rest;
        for (int c; (c = std::getchar()) != EOF;)
            rest += static_cast<char>(c);
        return rest;
    }

    Installation installation;
};

} // namespace

TEST_F(Settings, areInTheInstallationFolder)
{
    EXPECT_EQ(settingsFilePath(), installation.root() + L"\\cfg\\settings.ini");
}

TEST_F(Settings, areEmptyWithoutAFileOrWithoutTheKey)
{
    EXPECT_EQ(getSetting("UseFtpServer"), "");
    write("Other=1\n");
    EXPECT_EQ(getSetting("UseFtpServer"), "");
    write("");
    EXPECT_EQ(getSetting("UseFtpServer"), "");
}

TEST_F(Settings, takeTheLastMatchingLine)
{
    write("UseFtpServer=y\nother=1\nXUseFtpServer=n\n");
    EXPECT_EQ(getSetting("UseFtpServer"), "n");
    write("UseFtpServer=y\r\nUseFtpServer without\r\n");
    EXPECT_EQ(getSetting("UseFtpServer"), "y");
}

TEST_F(Settings, loseAByteWithoutALineFeed)
{
    write("UseFtpServer=y");
    EXPECT_EQ(getSetting("UseFtpServer"), "");
}

TEST_F(Settings, takeALongLineInPiecesOf1023Bytes)
{
    // The key is at the start of the line's second piece.
    write("a=" + std::string(1021, 'x') + "MCXCATIA=y\n");
    EXPECT_EQ(getSetting("MCXCATIA"), "y");
}

TEST_F(Settings, areReadAgainEachTime)
{
    write("k=1\n");
    EXPECT_EQ(getSetting("k"), "1");
    write("k=2\n");
    EXPECT_EQ(getSetting("k"), "2");
}

TEST_F(Settings, areEmptyWhileTheFileIsLocked)
{
    write("k=1\n");
    const HANDLE lock = CreateFileW(settingsFilePath().c_str(), GENERIC_READ | GENERIC_WRITE, 0,
                                    nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(lock, INVALID_HANDLE_VALUE);
    EXPECT_EQ(getSetting("k"), "");
    CloseHandle(lock);
    EXPECT_EQ(getSetting("k"), "1");
}

TEST_F(Settings, drainStandardInputPerLine)
{
    write("k=1\nl=2\n");
    installation.feedStandardInput("first\nsecond\nthird\n");
    EXPECT_EQ(getSetting("k"), "1");
    EXPECT_EQ(restOfStandardInput(), "third\n");
}

TEST_F(Settings, switchNcImportOnWithoutAFileOrAKey)
{
    EXPECT_EQ(isNcImportEnabled(ncImportKey), "y");
    write("Other=n\n");
    EXPECT_EQ(isNcImportEnabled(ncImportKey), "y");
}

TEST_F(Settings, switchNcImportByTheLastLine)
{
    write("MCXIMPORTNC=n\nother\nMCXIMPORTNC=Y\n");
    EXPECT_EQ(isNcImportEnabled(ncImportKey), "y");
    write("MCXIMPORTNC=y\nMCXIMPORTNC=N");
    EXPECT_EQ(isNcImportEnabled(ncImportKey), "n");
}

TEST_F(Settings, compareTheNcKeyByAddress)
{
    write("MCXIMPORTNC=n\n");
    const std::string sameText = "MCXIMPORTNC";
    EXPECT_EQ(isNcImportEnabled(sameText.c_str()), "y");
    EXPECT_EQ(isNcImportEnabled("Other"), "y");
    EXPECT_EQ(isNcImportEnabled(ncImportKey), "n");
}

TEST_F(Settings, drainStandardInputForTheNcSwitchToo)
{
    write("a\nb\n");
    installation.feedStandardInput("1\n2\n3\n");
    isNcImportEnabled(ncImportKey);
    EXPECT_EQ(restOfStandardInput(), "3\n");
}
