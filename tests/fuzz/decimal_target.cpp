// The numbers at the beginning of a text, narrow and wide.
#include "fuzz/differences.h"
#include "fuzz/input.h"
#include "fuzz/plain_text.h"
#include "fuzz/targets.h"
#include "formats/decimal.h"

namespace fuzzing {

namespace {

std::optional<std::int32_t> plainDecimal(std::string_view text)
{
    const auto number = plainNumber(std::string(text));
    if (!number || *number < -2147483648LL || *number > 2147483647LL)
        return std::nullopt;
    return static_cast<std::int32_t>(*number);
}

std::string checkDecimal(std::string_view bytes)
{
    const std::wstring wide = wideText(bytes);
    Differences differences;
    differences.compare("number", torvapdm::parseDecimal(bytes), plainDecimal(bytes));
    differences.compare("number or 0", torvapdm::parseDecimalOrZero(wide), plainNumberOrZero(wide));
    return differences.text();
}

} // namespace

Target decimalTarget()
{
    return {
        "decimal",
        checkDecimal,
        {"12", " \t\n\v\f\r-5x", "+2147483647", "2147483648", "-2147483648", "-2147483649", "+-1",
         "- 1", "", "000000000000000000000000000000007", "99999999999999999999"},
        {"-", "+", " ", "0", "2147483647", "2147483648", "9223372036854775808", "\x01\xFF\x15"}};
}

} // namespace fuzzing
