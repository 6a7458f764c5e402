#include "formats/settings_file.h"

#include <gtest/gtest.h>

using namespace torvapdm;

namespace {

std::string afterLine(std::string_view line, const char* before)
{
    std::string answer = before;
    applyNcImportLine(line, answer);
    return answer;
}

} // namespace

TEST(NcImportLine, answersLowerCaseForEitherCase)
{
    EXPECT_EQ(afterLine("MCXIMPORTNC=y\n", "n"), "y");
    EXPECT_EQ(afterLine("MCXIMPORTNC=Y\n", "n"), "y");
    EXPECT_EQ(afterLine("MCXIMPORTNC=n\n", "y"), "n");
    EXPECT_EQ(afterLine("MCXIMPORTNC=N\n", "y"), "n");
}

TEST(NcImportLine, isFoundAnywhereInTheLine)
{
    EXPECT_EQ(afterLine("# XMCXIMPORTNC=none", "y"), "n");
}

TEST(NcImportLine, prefersNoToYes)
{
    EXPECT_EQ(afterLine("MCXIMPORTNC=Y MCXIMPORTNC=n", "y"), "n");
    EXPECT_EQ(afterLine("MCXIMPORTNC=n MCXIMPORTNC=Y", "y"), "n");
}

TEST(NcImportLine, keepsTheAnswerWithoutAKey)
{
    EXPECT_EQ(afterLine("MCXIMPORTNC=maybe", "n"), "n");
    EXPECT_EQ(afterLine("mcximportnc=y", "n"), "n");
    EXPECT_EQ(afterLine("MCXIMPORTNC = y", "n"), "n");
    EXPECT_EQ(afterLine("", "y"), "y");
}
