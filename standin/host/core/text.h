// Text between UTF-8 and the system's wide strings.
#pragma once

#include "host/import.h"

#include <optional>
#include <string>
#include <string_view>

namespace standin {

// Nothing when the bytes are not UTF-8.
MCCORE_API std::optional<std::wstring> fromUtf8(std::string_view bytes);

// Half a surrogate pair becomes U+FFFD.
MCCORE_API std::string toUtf8(std::wstring_view text);

// The text of a record's field: up to its terminating zero, or all of it when there is none.
template <size_t capacity>
std::wstring_view fieldText(const wchar_t (&field)[capacity])
{
    const std::wstring_view whole(field, capacity);
    return whole.substr(0, whole.find(L'\0'));
}

// Fills a record's field with the text, cut to its capacity, and zeroes what is left of it.
template <size_t capacity>
void setFieldText(wchar_t (&field)[capacity], std::wstring_view text)
{
    const size_t length = text.copy(field, capacity);
    for (size_t place = length; place < capacity; ++place)
        field[place] = L'\0';
}

} // namespace standin
