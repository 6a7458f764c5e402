#include "formats/settings_file.h"

#include <gtest/gtest.h>

using namespace torvapdm;

namespace {

std::string after(std::string_view line, const char* before)
{
    std::string answer = before;
    applyNcImportLine(line, answer);
    return answer;
}

} // namespace

TEST(NcImportLine, answersLowerCaseForEitherCase)
{
    EXPECT_EQ(after("MCXIMPORTNC=y\n", "n"), "y");
    EXPECT_EQ(after("MCXIMPORTNC=Y\n", "n"), "y");
    EXPECT_EQ(after("MCXIMPORTNC=n\n", "y"), "n");
    EXPECT_EQ(after("MCXIMPORTNC=N\n", "y"), "n");
}

TEST(NcImportLine, isFoundAnywhereInTheLine)
{
    EXPECT_EQ(after("# XMCXIMPORTNC=none", "y"), "n");
}

TEST(NcImportLine, prefersNoToYes)
{
    EXPECT_EQ(after("MCXIMPORTNC=Y MCXIMPORTNC=n", "y"), "n");
    EXPECT_EQ(after("MCXIMPORTNC=n MCXIMPORTNC=Y", "y"), "n");
}

TEST(NcImportLine, keepsTheAnswerWithoutAKey)
{
    EXPECT_EQ(after("MCXIMPORTNC=maybe", "n"), "n");
    EXPECT_EQ(after("mcximportnc=y", "n"), "n");
    EXPECT_EQ(after("MCXIMPORTNC = y", "n"), "n");
    EXPECT_EQ(after("", "y"), "y");
}
