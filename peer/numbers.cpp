#include "peer/numbers.h"

#include <charconv>
#include <cmath>
#include <system_error>

namespace companion {

std::optional<std::int64_t> readNumber(std::wstring_view text, std::int64_t least,
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

std::optional<std::int64_t> readPrintedNumber(std::string_view text, std::int64_t least,
                                              std::int64_t most)
{
    const auto number = readNumber(std::wstring(text.begin(), text.end()), least, most);
    return number && std::to_string(*number) == text ? number : std::nullopt;
}

std::optional<double> readPrintedDecimal(std::string_view text)
{
    double number = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc{} || stop != end)
        return std::nullopt;
    // What is behind a "nan" differs between runtime libraries.
    return std::isnan(number) || printedDecimal(number) == text ? std::optional(number)
                                                                : std::nullopt;
}

std::string printedDecimal(double number)
{
    constexpr int digits = 6;
    char text[32]; // more than "-1.23457e-308" takes
    const auto result =
        std::to_chars(text, text + sizeof text, number, std::chars_format::general, digits);
    return {text, result.ptr};
}

} // namespace companion
