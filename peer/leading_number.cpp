#include "peer/leading_number.h"

#include <algorithm>
#include <limits>

namespace zemlink {

std::optional<std::int64_t> leadingNumber(std::string_view text)
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

std::int32_t leadingNumberOrZero(std::string_view text)
{
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(
        std::clamp<std::int64_t>(leadingNumber(text).value_or(0), Limits::min(), Limits::max()));
}

} // namespace zemlink
