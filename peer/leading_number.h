// A number in front of anything else, as the add-in's readers look for one.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace zemlink {

// The decimal number behind white space and a sign, up to the first character that is no digit.
// Empty without a digit. One that leaves 32 bits is some number that does so too.
std::optional<std::int64_t> leadingNumber(std::string_view text);

// The same, 0 without a digit, and the nearest number of 32 bits.
std::int32_t leadingNumberOrZero(std::string_view text);

} // namespace zemlink
