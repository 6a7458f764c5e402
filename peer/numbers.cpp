#include "peer/numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <limits>
#include <system_error>

namespace peer {

namespace {

bool isWideSpace(unsigned unit)
{
    switch (unit) {
    case 0x0085:
    case 0x00A0:
    case 0x1680:
    case 0x2028:
    case 0x2029:
    case 0x202F:
    case 0x205F:
    case 0x3000:
        return true;
    default:
        return unit >= 0x2000 && unit <= 0x200A;
    }
}

// The space, digit or ASCII character that the unit is read as in a number; '?' for any other.
char toAscii(wchar_t character)
{
    static constexpr unsigned zeros[] = {0x0660, 0x06F0, 0x0966, 0x09E6, 0x0A66, 0x0AE6,
                                         0x0B66, 0x0C66, 0x0CE6, 0x0D66, 0x0E50, 0x0ED0,
                                         0x0F20, 0x1040, 0x17E0, 0x1810, 0xFF10};
    const auto unit = static_cast<unsigned>(character);
    if (unit < 0x80)
        return static_cast<char>(unit);
    if (isWideSpace(unit))
        return ' ';
    const auto* const next = std::upper_bound(std::begin(zeros), std::end(zeros), unit);
    const bool isDigit = next != std::begin(zeros) && unit - next[-1] < 10;
    return isDigit ? static_cast<char>('0' + (unit - next[-1])) : '?';
}

} // namespace

std::optional<std::int64_t> parseNumber(std::wstring_view text, std::int64_t least,
                                        std::int64_t most)
{
    // Longer texts could overflow; no number asked for here has more than ten digits.
    constexpr size_t longestDigits = 15;
    const bool isNegative = text.starts_with(L'-');
    const std::wstring_view digits = text.substr(isNegative ? 1 : 0);
    if (digits.empty() || digits.size() > longestDigits ||
        digits.find_first_not_of(L"0123456789") != std::wstring_view::npos)
        return std::nullopt;
    std::int64_t number = 0;
    for (const wchar_t digit : digits)
        number = number * 10 + (digit - L'0');
    number = isNegative ? -number : number;
    if (number < least || number > most)
        return std::nullopt;
    return number;
}

std::optional<std::int64_t> parsePrintedNumber(std::string_view text, std::int64_t least,
                                               std::int64_t most)
{
    const auto number = parseNumber(std::wstring(text.begin(), text.end()), least, most);
    return number && std::to_string(*number) == text ? number : std::nullopt;
}

std::optional<double> parsePrintedDecimal(std::string_view text)
{
    double number = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc{} || stop != end)
        return std::nullopt;
    // The text after "nan" differs between runtime libraries.
    return std::isnan(number) || formatDecimal(number) == text ? std::optional(number)
                                                               : std::nullopt;
}

std::string formatDecimal(double number)
{
    constexpr int digits = 6;
    char text[32]; // longer than "-1.23457e-308"
    const auto result =
        std::to_chars(text, text + sizeof text, number, std::chars_format::general, digits);
    return {text, result.ptr};
}

std::optional<std::int64_t> parseLeadingNumber(std::string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
    const bool isNegative = text.starts_with('-');
    text.remove_prefix(isNegative || text.starts_with('+') ? 1 : 0);
    constexpr std::int64_t beyond = INT64_C(1) << 40;
    std::int64_t number = 0;
    size_t digits = 0;
    for (; digits < text.size() && text[digits] >= '0' && text[digits] <= '9'; ++digits)
        number = std::min(number * 10 + (text[digits] - '0'), beyond);
    if (digits == 0)
        return std::nullopt;
    return isNegative ? -number : number;
}

std::int32_t parseLeadingNumberOrZero(std::wstring_view text)
{
    using Limits = std::numeric_limits<std::int32_t>;
    std::string ascii;
    for (const wchar_t unit : text)
        ascii += toAscii(unit);
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(parseLeadingNumber(ascii).value_or(0),
                                                              Limits::min(), Limits::max()));
}

} // namespace peer
