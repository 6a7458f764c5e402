#include "core/part_values.h"

#include <cmath>

namespace standin {

namespace {

bool isHighSurrogate(wchar_t unit)
{
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool isLowSurrogate(wchar_t unit)
{
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

bool isHalfPair(std::wstring_view text, size_t place)
{
    if (isHighSurrogate(text[place]))
        return place + 1 == text.size() || !isLowSurrogate(text[place + 1]);
    return isLowSurrogate(text[place]) && (place == 0 || !isHighSurrogate(text[place - 1]));
}

bool needsNotation(std::wstring_view text, size_t place)
{
    const wchar_t unit = text[place];
    const bool atEdge = place == 0 || place + 1 == text.size();
    return unit < 0x20 || unit == 0x7F || unit == L'%' || (unit == L' ' && atEdge) ||
           isHalfPair(text, place);
}

std::wstring hexadecimalNotation(wchar_t unit)
{
    constexpr wchar_t digits[] = L"0123456789ABCDEF";
    std::wstring notation = L"%";
    for (int shift = 12; shift >= 0; shift -= 4)
        notation += digits[(unit >> shift) & 0xF];
    return notation;
}

// Parses four hexadecimal digits at the start of the text.
bool readUnit(std::wstring_view text, wchar_t& unit)
{
    if (text.size() < 4)
        return false;
    std::string digits;
    for (const wchar_t digit : text.substr(0, 4))
        digits += digit < 0x80 ? static_cast<char>(digit) : '?';
    std::uint16_t value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + 4, value, 16);
    unit = static_cast<wchar_t>(value);
    return error == std::errc() && end == digits.data() + 4;
}

} // namespace

bool readText(std::string_view notation, std::wstring& text)
{
    const std::optional<std::wstring> wide = fromUtf8(notation);
    if (!wide)
        return false;
    text.clear();
    for (size_t place = 0; place < wide->size(); ++place) {
        wchar_t unit = (*wide)[place];
        if (unit == L'%') {
            if (!readUnit(std::wstring_view(*wide).substr(place + 1), unit) || unit == L'\0')
                return false;
            place += 4;
        }
        text += unit;
    }
    return true;
}

std::string textNotation(std::wstring_view text)
{
    std::wstring notation;
    for (size_t place = 0; place < text.size(); ++place)
        if (needsNotation(text, place))
            notation += hexadecimalNotation(text[place]);
        else
            notation += text[place];
    return toUtf8(notation);
}

bool readDecimals(std::string_view notation, std::vector<double>& values)
{
    values.clear();
    while (true) {
        const size_t space = notation.find(' ');
        double value = 0;
        if (!readDecimal(notation.substr(0, space), value))
            return false;
        values.push_back(value);
        if (space == std::string_view::npos)
            return true;
        notation.remove_prefix(space + 1);
    }
}

bool writeDecimals(std::string& out, const std::vector<double>& values)
{
    bool allWritten = true;
    for (size_t place = 0; place < values.size(); ++place) {
        if (place > 0)
            out += ' ';
        allWritten = writeValue(out, values[place]) && allWritten;
    }
    return allWritten;
}

bool readValue(std::string_view notation, point3& value)
{
    std::vector<double> values;
    if (!readDecimals(notation, values) || values.size() != 3)
        return false;
    value = {values[0], values[1], values[2]};
    return true;
}

bool writeValue(std::string& out, std::int32_t value)
{
    out += std::to_string(value);
    return true;
}

bool writeValue(std::string& out, double value)
{
    out += decimalText(value);
    return std::isfinite(value);
}

bool writeValue(std::string& out, const point3& value)
{
    return writeDecimals(out, {value.x, value.y, value.z});
}

bool writeValue(std::string& out, const std::wstring& value)
{
    out += textNotation(value);
    return true;
}

} // namespace standin
