#include "formats/checkout_answer.h"

#include <gtest/gtest.h>
#include <stdexcept>

using namespace torvapdm;

namespace {

struct AnswerCase {
    const wchar_t* text;
    CheckoutAnswer::Kind kind;
    const wchar_t* fileType;
    int id;
    const wchar_t* path;
};

const AnswerCase answerCases[] = {
    {L"CAD1234 C:\\Parts\\bracket.mcam", CheckoutAnswer::Kind::file, L"CAD", 1234,
     L"C:\\Parts\\bracket.mcam"},
    {L"ABC5 C:\\a b.mcam", CheckoutAnswer::Kind::file, L"ABC", 5, L"C:\\a b.mcam"},
    {L"CAD C:\\f.mcam", CheckoutAnswer::Kind::file, L"CAD", 0, L"C:\\f.mcam"},
    {L"CADx12 C:\\f.mcam", CheckoutAnswer::Kind::file, L"CAD", 0, L"C:\\f.mcam"},
    {L"CAD-12 x", CheckoutAnswer::Kind::file, L"CAD", -12, L"x"},
    {L"CAD\t7x x", CheckoutAnswer::Kind::file, L"CAD", 7, L"x"},
    {L"CAD99999999999 x", CheckoutAnswer::Kind::file, L"CAD", 2147483647, L"x"},
    {L"CAD5 a\nb c\n", CheckoutAnswer::Kind::file, L"CAD", 5, L"a\nb c\n"},
    {L"CAD5  a ", CheckoutAnswer::Kind::file, L"CAD", 5, L" a "},
    {L"CAD5 ", CheckoutAnswer::Kind::file, L"CAD", 5, L""},
    {L"CAD5 \r\n", CheckoutAnswer::Kind::file, L"CAD", 5, L"\r\n"},
    {L"CAD5\r x\n", CheckoutAnswer::Kind::file, L"CAD", 5, L"x\n"},
    {L"checkin x", CheckoutAnswer::Kind::file, L"che", 0, L"x"},
    {L"CHECKINS x", CheckoutAnswer::Kind::file, L"CHE", 0, L"x"},
    {L"CHECKIN ", CheckoutAnswer::Kind::checkIn, L"", 0, L""},
    {L"CHECKIN C:\\a.mcam\nmore", CheckoutAnswer::Kind::checkIn, L"", 0, L""},
    {L"CHECKIN", CheckoutAnswer::Kind::unusable, L"", 0, L""},
    {L"CHECKIN\n x", CheckoutAnswer::Kind::unusable, L"", 0, L""},
    {L"CAD12", CheckoutAnswer::Kind::unusable, L"", 0, L""},
    {L"CAD12\nC:\\a b", CheckoutAnswer::Kind::unusable, L"", 0, L""},
    {L"", CheckoutAnswer::Kind::unusable, L"", 0, L""},
    {L"\n", CheckoutAnswer::Kind::unusable, L"", 0, L""},
};

} // namespace

TEST(CheckoutAnswer, isParsedByItsFirstWord)
{
    for (const AnswerCase& expected : answerCases) {
        std::wstring fileType;
        const CheckoutAnswer answer = parseCheckoutAnswer(expected.text, fileType);
        EXPECT_EQ(answer.kind, expected.kind) << expected.text;
        EXPECT_EQ(fileType, expected.fileType) << expected.text;
        EXPECT_EQ(answer.file.id, expected.id) << expected.text;
        EXPECT_EQ(answer.file.path, expected.path) << expected.text;
    }
}

TEST(CheckoutAnswer, throwsForAShortFirstWord)
{
    for (const wchar_t* word : {L"AB", L"A", L"", L"12"}) {
        std::wstring fileType = L"CAD";
        EXPECT_THROW(parseCheckoutAnswer(word + std::wstring(L" x"), fileType), std::out_of_range);
        EXPECT_EQ(fileType, word);
    }
}
