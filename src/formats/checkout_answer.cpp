#include "formats/checkout_answer.h"

#include "formats/decimal.h"

namespace torvapdm {

namespace {

std::uint16_t numberAt(std::int64_t seconds)
{
    // The low bits of a signed product are those of the unsigned one, which may wrap around.
    return static_cast<std::uint16_t>(static_cast<std::uint64_t>(seconds) * 275604541u);
}

} // namespace

CheckoutAnswer parseCheckoutAnswer(const std::wstring& text, std::wstring& fileType)
{
    const std::wstring firstLine = text.substr(0, text.find(L'\n'));
    const size_t space = firstLine.find(L' ');
    if (space == std::wstring::npos)
        return {};
    const std::wstring word = firstLine.substr(0, space);
    if (word == L"CHECKIN")
        return {CheckoutAnswer::Kind::checkIn, {}};
    fileType = word.substr(0, 3);
    // Quirk Q18: substr throws for a word of fewer than three characters.
    const std::int32_t id = parseDecimalOrZero(word.substr(3));
    return {CheckoutAnswer::Kind::file, {id, text.substr(space + 1)}};
}

// Quirk Q16: the folder's backslash is followed by another one, and every call within one second
// gives the same path.
std::wstring formatAnswerPath(const std::wstring& folder, std::int64_t seconds)
{
    return folder + L"\\TORVA ZEM-" + formatDecimal(numberAt(seconds)) + L".tmp";
}

} // namespace torvapdm
