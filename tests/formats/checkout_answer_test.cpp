#include "formats/checkout_answer.h"

#include <gtest/gtest.h>
#include <stdexcept>

using namespace torvapdm;
using Kind = CheckoutAnswer::Kind;

namespace {

struct Case {
    const wchar_t* text;
    Kind kind;
    const wchar_t* typePrefix;
    int id;
    const wchar_t* path;
};

const Case cases[] = {
    {L"CAD1234 C:\\Parts\\bracket.mcam", Kind::file, L"CAD", 1234, L"C:\\Parts\\bracket.mcam"},
    {L"ABC5 C:\\a b.mcam", Kind::file, L"ABC", 5, L"C:\\a b.mcam"},
    {L"CAD C:\\f.mcam", Kind::file, L"CAD", 0, L"C:\\f.mcam"},
    {L"CADx12 C:\\f.mcam", Kind::file, L"CAD", 0, L"C:\\f.mcam"},
    {L"CAD-12 x", Kind::file, L"CAD", -12, L"x"},
    {L"CAD\t7x x", Kind::file, L"CAD", 7, L"x"},
    {L"CAD99999999999 x", Kind::file, L"CAD", 2147483647, L"x"},
    {L"CAD5 a\nb c\n", Kind::file, L"CAD", 5, L"a\nb c\n"},
    {L"CAD5  a ", Kind::file, L"CAD", 5, L" a "},
    {L"CAD5 ", Kind::file, L"CAD", 5, L""},
    {L"CAD5 \r\n", Kind::file, L"CAD", 5, L"\r\n"},
    {L"checkin x", Kind::file, L"che", 0, L"x"},
    {L"CHECKINS x", Kind::file, L"CHE", 0, L"x"},
    {L"CHECKIN ", Kind::checkIn, L"", 0, L""},
    {L"CHECKIN C:\\a.mcam\nmore", Kind::checkIn, L"", 0, L""},
    {L"CHECKIN", Kind::unusable, L"", 0, L""},
    {L"CHECKIN\n x", Kind::unusable, L"", 0, L""},
    {L"CAD12", Kind::unusable, L"", 0, L""},
    {L"CAD12\nC:\\a b", Kind::unusable, L"", 0, L""},
    {L"", Kind::unusable, L"", 0, L""},
    {L"\n", Kind::unusable, L"", 0, L""},
};

} // namespace

TEST(CheckoutAnswer, isParsedByItsFirstWord)
{
    for (const Case& expected : cases) {
        std::wstring typePrefix;
        const CheckoutAnswer answer = parseCheckoutAnswer(expected.text, typePrefix);
        EXPECT_EQ(answer.kind, expected.kind) << expected.text;
        EXPECT_EQ(typePrefix, expected.typePrefix) << expected.text;
        EXPECT_EQ(answer.file.id, expected.id) << expected.text;
        EXPECT_EQ(answer.file.path, expected.path) << expected.text;
    }
}

TEST(CheckoutAnswer, throwsForAShortFirstWord)
{
    for (const wchar_t* word : {L"AB", L"A", L"", L"12"}) {
        std::wstring typePrefix = L"CAD";
        EXPECT_THROW(parseCheckoutAnswer(word + std::wstring(L" x"), typePrefix),
                     std::out_of_range);
        EXPECT_EQ(typePrefix, word);
    }
}
