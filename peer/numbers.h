// Decimal numbers in text that other programs wrote.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace peer {

// The whole text as a decimal number with an optional minus sign. Empty when it is anything else or
// is not within `least` to `most`.
std::optional<std::int64_t> parseNumber(std::wstring_view text, std::int64_t least,
                                        std::int64_t most);

// The same for a number as a program prints it: without leading zeros, and 0 without a sign.
std::optional<std::int64_t> parsePrintedNumber(std::string_view text, std::int64_t least,
                                               std::int64_t most);

// A number with six significant digits as a program prints it: `12`, `0.5`, `1e+06`, `-inf`, `nan`,
// also `-nan(ind)`. Empty for anything else.
std::optional<double> parsePrintedDecimal(std::string_view text);

// The number in that notation.
std::string formatDecimal(double number);

// The decimal number at the start of the text, after white space and a sign and up to the first
// character that is not a digit. Empty without a digit. A number that does not fit into 32 bits
// gives some number that does not fit either.
std::optional<std::int64_t> parseLeadingNumber(std::string_view text);

// The same in UTF-16, with the white space and the decimal digits of other scripts that the C
// runtime's wide functions know; 0 without a digit, and the nearest number of 32 bits.
std::int32_t parseLeadingNumberOrZero(std::wstring_view text);

} // namespace peer
