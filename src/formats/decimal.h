// Decimal numbers. Parsing accepts leading white space and one sign, and the first character that
// is not a digit ends the number. No platform header.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace torvapdm {

// The number; nothing when the text has no digits or the number does not fit into 32 bits.
std::optional<std::int32_t> parseDecimal(std::string_view text);

// The number as _wtoi reads it: white space and digits outside ASCII count as well (U+00A0, U+3000,
// U+FF10 to U+FF19). 0 when the text has no digits, the nearest limit when it does not fit into 32
// bits.
std::int32_t parseDecimalOrZero(std::wstring_view text);

// The number without leading zeros, after "-" if it is negative.
std::wstring formatDecimal(std::int64_t number);

} // namespace torvapdm
