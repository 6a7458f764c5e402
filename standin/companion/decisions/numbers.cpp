#include "decisions/numbers.h"

namespace companion {

std::optional<std::int64_t> readNumber(std::wstring_view text, std::int64_t least,
                                       std::int64_t most)
{
    // Longer texts could overflow; no number asked for here has more than ten digits.
    constexpr std::size_t longestDigits = 15;
    const bool isNegative = text.starts_with(L'-');
    const std::wstring_view digits = text.substr(isNegative ? 1 : 0);
    if (digits.empty() || digits.size() > longestDigits ||
        digits.find_first_not_of(L"0123456789") != std::wstring_view::npos) {
        return std::nullopt;
    }
    std::int64_t number = 0;
    for (const wchar_t digit : digits) {
        number = number * 10 + (digit - L'0');
    }
    number = isNegative ? -number : number;
    if (number < least || number > most) {
        return std::nullopt;
    }
    return number;
}

} // namespace companion
