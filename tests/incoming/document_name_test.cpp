#include "incoming/document_name.h"

#include <gtest/gtest.h>

using namespace torvapdm;

TEST(McamName, replacesTheLastExtension)
{
    EXPECT_EQ(mcamNameOf(L"C:\\x\\part.emcam"), L"C:\\x\\part.mcam");
    EXPECT_EQ(mcamNameOf(L"C:\\x\\part.v2.mcam"), L"C:\\x\\part.v2.mcam");
    EXPECT_EQ(mcamNameOf(L"C:\\x\\part."), L"C:\\x\\part.mcam");
}

TEST(McamName, cutsAtAFoldersDot)
{
    EXPECT_EQ(mcamNameOf(L"C:\\a.b\\part"), L"C:\\a.mcam");
}

TEST(McamName, isAppendedToANameWithoutAnyDot)
{
    EXPECT_EQ(mcamNameOf(L"part"), L"part.mcam");
    EXPECT_EQ(mcamNameOf(L""), L".mcam");
}

TEST(TitleForDocument, replacesTextAfterTheLastTwoSpaces)
{
    EXPECT_EQ(titleForDocument(L"Host - part  C:\\OLD.MCAM", L"C:\\Parts\\new.mcam"),
              L"Host - part  C:\\PARTS\\NEW.MCAM");
    EXPECT_EQ(titleForDocument(L"A  B  C", L"d"), L"A  B  D");
}

TEST(TitleForDocument, keepsATitleWithoutTwoSpaces)
{
    EXPECT_EQ(titleForDocument(L"Host - part", L"x"), L"Host - part  X");
    EXPECT_EQ(titleForDocument(L"", L"x"), L"  X");
}

TEST(TitleForDocument, cutsThreeSpacesAtTheLastPair)
{
    EXPECT_EQ(titleForDocument(L"A   B", L"c"), L"A   C");
}

TEST(TitleForDocument, upperCasesOnlyTheLettersAToZ)
{
    EXPECT_EQ(titleForDocument(L"T", L"az{`@[\u00E4\u00DF\u0131 9.mcam"),
              L"T  AZ{`@[\u00E4\u00DF\u0131 9.MCAM");
}
