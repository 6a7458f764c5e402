// The values of part files: a parser and a formatter for each kind. docs/part-file.md describes the
// notation.
//
// A read function returns false for invalid text and may leave the value partly changed. A write
// function returns false for a value without a notation (a number that is not finite).
#pragma once

#include "core/text.h"
#include "host/records.h"

#include <bit>
#include <string>
#include <string_view>
#include <vector>

namespace standin {

bool readText(std::string_view notation, std::wstring& text);
std::string textNotation(std::wstring_view text);

// Numbers separated by one space.
bool readDecimals(std::string_view notation, std::vector<double>& values);
bool writeDecimals(std::string& out, const std::vector<double>& values);

inline bool readValue(std::string_view notation, std::int16_t& value)
{
    return readInteger(notation, value);
}

inline bool readValue(std::string_view notation, std::int32_t& value)
{
    return readInteger(notation, value);
}

inline bool readValue(std::string_view notation, double& value)
{
    return readDecimal(notation, value);
}

inline bool readValue(std::string_view notation, std::wstring& value)
{
    return readText(notation, value);
}

bool readValue(std::string_view notation, point3& value);

template <size_t capacity>
bool readValue(std::string_view notation, wchar_t (&value)[capacity])
{
    std::wstring text;
    if (!readText(notation, text) || text.size() >= capacity)
        return false;
    setFieldText(value, text);
    return true;
}

bool writeValue(std::string& out, std::int32_t value);
bool writeValue(std::string& out, double value);
bool writeValue(std::string& out, const point3& value);
bool writeValue(std::string& out, const std::wstring& value);

inline bool writeValue(std::string& out, std::int16_t value)
{
    return writeValue(out, std::int32_t{value});
}

template <size_t capacity>
bool writeValue(std::string& out, const wchar_t (&value)[capacity])
{
    out += textNotation(fieldText(value));
    return true;
}

template <class Value>
bool sameValue(const Value& left, const Value& right)
{
    return left == right;
}

// Compares the bits: -0 differs from the default 0 and must be written.
inline bool sameValue(double left, double right)
{
    return std::bit_cast<std::uint64_t>(left) == std::bit_cast<std::uint64_t>(right);
}

inline bool sameValue(const point3& left, const point3& right)
{
    return sameValue(left.x, right.x) && sameValue(left.y, right.y) && sameValue(left.z, right.z);
}

template <size_t capacity>
bool sameValue(const wchar_t (&left)[capacity], const wchar_t (&right)[capacity])
{
    return fieldText(left) == fieldText(right);
}

} // namespace standin
