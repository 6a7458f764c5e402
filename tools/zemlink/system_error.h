// The system's own words for an error.
#pragma once

#include "tools/zemlink/facts.h"

#include <cstdint>
#include <string>

namespace zemlink {

// `Access denied. (error 5)`, UTF-8.
std::string systemErrorText(std::uint32_t code);

// What a call came to: fine, or this error code with its text.
Result resultOf(bool isFine, std::uint32_t code);

} // namespace zemlink
