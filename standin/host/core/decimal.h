// Numbers as text: independent of the locale, in the trace as in part files.
#pragma once

#include "host/import.h"

#include <charconv>
#include <string>
#include <string_view>

namespace standin {

// The general notation with as few digits, six or more, as read back to the same value: 62.5,
// 100000, 1e+06, 0.1.
MCCORE_API std::string decimalText(double value);

// Reads the whole text as a finite number; false, with `value` as it was, when it is none.
MCCORE_API bool readDecimal(std::string_view text, double& value);

// Reads the whole text as an integer of this width; false, with `value` as it was, when it is none
// or does not fit.
template <class Integer>
bool readInteger(std::string_view text, Integer& value)
{
    Integer read{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), read);
    if (error != std::errc() || end != text.data() + text.size())
        return false;
    value = read;
    return true;
}

} // namespace standin
