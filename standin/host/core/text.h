// Strings: UTF-8 and UTF-16, fields of records, and locale-independent numbers.
#pragma once

#include "host/import.h"

#include <charconv>
#include <optional>
#include <string>
#include <string_view>

namespace standin {

// Nothing if the bytes are not UTF-8.
MCCORE_API std::optional<std::wstring> fromUtf8(std::string_view bytes);

// An unpaired surrogate becomes U+FFFD.
MCCORE_API std::string toUtf8(std::wstring_view text);

// The text of a record's field, up to its null terminator if there is one.
template <size_t capacity>
std::wstring_view fieldText(const wchar_t (&field)[capacity])
{
    const std::wstring_view whole(field, capacity);
    return whole.substr(0, whole.find(L'\0'));
}

// Fills a record's field with the text, truncated to its capacity, and zeroes the rest.
template <size_t capacity>
void setFieldText(wchar_t (&field)[capacity], std::wstring_view text)
{
    const size_t length = text.copy(field, capacity);
    for (size_t place = length; place < capacity; ++place)
        field[place] = L'\0';
}

// General notation with the fewest digits, at least six, that read back to the same value: 62.5,
// 100000, 1e+06, 0.1.
MCCORE_API std::string decimalText(double value);

// "1 tool", "2 tools".
MCCORE_API std::wstring countText(size_t count, std::wstring_view noun);

// Parses the whole text as a finite number. False, with `value` unchanged, if it is not one.
MCCORE_API bool readDecimal(std::string_view text, double& value);

// Parses the whole text as an integer of this width. False, with `value` unchanged, if it is not
// one or out of range.
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
