// Decimal numbers at the start of a text: leading white space and one sign are accepted, the first
// character that is no digit ends the number. No platform header: these are decisions.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace torvapdm {

// The number, or nothing when the text has no digits or the number does not fit into 32 bits.
std::optional<std::int32_t> decimalNumber(std::string_view text);

// The number, 0 when the text has no digits, the nearest limit when it does not fit into 32 bits.
std::int32_t decimalOrZero(std::wstring_view text);

} // namespace torvapdm
