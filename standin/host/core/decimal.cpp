#include "core/decimal.h"

#include <cmath>

namespace standin {

std::string decimalText(double value)
{
    constexpr int fewestDigits = 6;
    constexpr int mostDigits = 17;
    char buffer[64];
    std::string text;
    for (int digits = fewestDigits; digits <= mostDigits; ++digits) {
        const auto end =
            std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, digits)
                .ptr;
        text.assign(buffer, end);
        double back = 0;
        // Near the largest number, a text with few digits may stand for none.
        if (readDecimal(text, back) && back == value)
            break;
    }
    return text;
}

bool readDecimal(std::string_view text, double& value)
{
    double read = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), read);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(read))
        return false;
    value = read;
    return true;
}

} // namespace standin
