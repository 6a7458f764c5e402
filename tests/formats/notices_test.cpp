#include "formats/notices.h"

#include <gtest/gtest.h>

using namespace torvapdm;

TEST(CommitNotice, holdsTheIdAndTheName)
{
    EXPECT_EQ(formatCommitNotice(42, "C:\\parts\\a.mcam"), "ZEMID=42|C:\\parts\\a.mcam");
    EXPECT_EQ(formatCommitNotice(0xFFFFFFFF, ""), "ZEMID=4294967295|");
}

TEST(ToolDataNotice, writesEveryIdInDecimal)
{
    EXPECT_EQ(formatToolDataNotice(7), "TOOL-7");
    EXPECT_EQ(formatToolDataNotice(-1), "TOOL--1");
}

TEST(NcQueueNotice, holdsTheName)
{
    EXPECT_EQ(formatNcQueueNotice("C:\\q|.txt"), "IMPORTNCQUEUE|C:\\q|.txt");
}

TEST(SetupSheetNotice, hasNoSeparator)
{
    EXPECT_EQ(formatSetupSheetNotice(42, L"C:\\P.xml"), L"MCAMXMLIMPORTDATAID=42;C:\\P.xml");
}

TEST(SetupSheetNotice, writesEveryIdInDecimal)
{
    EXPECT_EQ(formatSetupSheetNotice(0, L"P"), L"MCAMXMLIMPORTDATAID=0;P");
    EXPECT_EQ(formatSetupSheetNotice(-1, L""), L"MCAMXMLIMPORTDATAID=-1;");
    EXPECT_EQ(formatSetupSheetNotice(INT32_MAX, L""), L"MCAMXMLIMPORTDATAID=2147483647;");
    EXPECT_EQ(formatSetupSheetNotice(INT32_MIN, L""), L"MCAMXMLIMPORTDATAID=-2147483648;");
}

TEST(SetupSheetNotice, keepsThePathUnchanged)
{
    EXPECT_EQ(formatSetupSheetNotice(1, L"C:\\a b;\u00C4\u4E00\".xml"),
              L"MCAMXMLIMPORTDATAID=1;C:\\a b;\u00C4\u4E00\".xml");
}
