// Decimal numbers in text that others wrote.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace companion {

// The whole text as a decimal number, with an optional minus sign and nothing else around it.
// Empty when it is none or lies outside `least` to `most`.
std::optional<std::int64_t> readNumber(std::wstring_view text, std::int64_t least,
                                       std::int64_t most);

} // namespace companion
