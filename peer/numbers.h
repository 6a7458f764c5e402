// Decimal numbers in text that others wrote.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace companion {

// The whole text as a decimal number, with an optional minus sign and nothing else around it.
// Empty when it is none or lies outside `least` to `most`.
std::optional<std::int64_t> readNumber(std::wstring_view text, std::int64_t least,
                                       std::int64_t most);

// The same for a number as a program prints it: without zeros in front, and 0 without a sign.
std::optional<std::int64_t> readPrintedNumber(std::string_view text, std::int64_t least,
                                              std::int64_t most);

// A number with six significant digits as a program prints it: `12`, `0.5`, `1e+06`, `-inf`, `nan`,
// also `-nan(ind)`. Empty for anything else.
std::optional<double> readPrintedDecimal(std::string_view text);

// That notation of the number.
std::string printedDecimal(double number);

} // namespace companion
