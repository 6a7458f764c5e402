#include "formats/decimal.h"

#include <algorithm>
#include <limits>

namespace torvapdm {

namespace {

constexpr std::int64_t lowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t highest = std::numeric_limits<std::int32_t>::max();

constexpr int noDigit = -1;

bool isSpace(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

int digitOf(char c)
{
    return c >= '0' && c <= '9' ? c - '0' : noDigit;
}

// The white space of the C runtime's wide functions.
bool isSpace(wchar_t c)
{
    constexpr std::wstring_view others = L"\u0020\u0085\u00A0\u1680\u2028\u2029\u202F\u205F\u3000";
    return (c >= L'\t' && c <= L'\r') || (c >= 0x2000 && c <= 0x200A) ||
           others.find(c) != std::wstring_view::npos;
}

// The decimal digits of the C runtime's wide functions: ten each from these zeros.
int digitOf(wchar_t c)
{
    constexpr std::wstring_view zeros = L"0\u0660\u06F0\u0966\u09E6\u0A66\u0AE6\u0B66\u0C66\u0CE6"
                                        L"\u0D66\u0E50\u0ED0\u0F20\u1040\u17E0"
                                        L"\u1810\uFF10";
    for (const wchar_t zero : zeros)
        if (c >= zero && c <= zero + 9)
            return c - zero;
    return noDigit;
}

// The number, capped just outside the range of 32 bits; nothing without digits.
template <class Character>
std::optional<std::int64_t> leadingNumber(std::basic_string_view<Character> text)
{
    auto at = std::find_if_not(text.begin(), text.end(), [](Character c) { return isSpace(c); });
    const bool negative = at != text.end() && *at == '-';
    if (at != text.end() && (*at == '-' || *at == '+'))
        ++at;
    if (at == text.end() || digitOf(*at) == noDigit)
        return std::nullopt;
    std::int64_t magnitude = 0;
    for (; at != text.end() && digitOf(*at) != noDigit; ++at)
        magnitude = std::min(magnitude * 10 + digitOf(*at), highest + 2);
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

// Not std::to_wstring, for which GCC links a whole printf of UTF-16 text and which is slower.
std::wstring formatDecimal(std::int64_t number)
{
    const std::string digits = std::to_string(number);
    return {digits.begin(), digits.end()};
}

} // namespace torvapdm
