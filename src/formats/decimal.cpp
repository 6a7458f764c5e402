#include "formats/decimal.h"

#include <algorithm>
#include <limits>

namespace torvapdm {

namespace {

constexpr std::int64_t lowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t highest = std::numeric_limits<std::int32_t>::max();

template <class Character>
bool isSpace(Character c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

template <class Character>
bool isDigit(Character c)
{
    return c >= '0' && c <= '9';
}

// The number, capped just outside the range of 32 bits; nothing without digits.
template <class Character>
std::optional<std::int64_t> leadingNumber(std::basic_string_view<Character> text)
{
    auto at = std::find_if_not(text.begin(), text.end(), isSpace<Character>);
    const bool negative = at != text.end() && *at == '-';
    if (at != text.end() && (*at == '-' || *at == '+'))
        ++at;
    if (at == text.end() || !isDigit(*at))
        return std::nullopt;
    std::int64_t magnitude = 0;
    for (; at != text.end() && isDigit(*at); ++at)
        magnitude = std::min(magnitude * 10 + (*at - '0'), highest + 2);
    return negative ? -magnitude : magnitude;
}

} // namespace

std::optional<std::int32_t> parseDecimal(std::string_view text)
{
    const auto number = leadingNumber(text);
    if (!number || *number < lowest || *number > highest)
        return std::nullopt;
    return static_cast<std::int32_t>(*number);
}

std::int32_t parseDecimalOrZero(std::wstring_view text)
{
    return static_cast<std::int32_t>(std::clamp(leadingNumber(text).value_or(0), lowest, highest));
}

} // namespace torvapdm
