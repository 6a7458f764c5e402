#include "formats/record_text.h"

#include <charconv>
#include <cmath>
#include <iterator>

namespace torvapdm {

namespace {

// The value as an integer when the general format writes it like one: at most six digits, no
// fraction, not a negative zero.
std::optional<std::int32_t> shortInteger(double value)
{
    if (!(value > -1e6 && value < 1e6))
        return std::nullopt;
    const auto whole = static_cast<std::int32_t>(value);
    if (whole != value || (whole == 0 && std::signbit(value)))
        return std::nullopt;
    return whole;
}

} // namespace

void putValue(RecordText& record, std::int32_t value)
{
    char digits[11]; // "-2147483648"
    const auto end = std::to_chars(digits, std::end(digits), value).ptr;
    put(record, {digits, end});
}

void putValue(RecordText& record, double value)
{
    // Most of a record's values are integers, and formatting those is several times as fast.
    if (const auto integer = shortInteger(value)) {
        putValue(record, *integer);
        return;
    }
    // C++ libraries differ in the text of a NaN.
    if (std::isnan(value)) {
        put(record, std::signbit(value) ? "-nan" : "nan");
        return;
    }
    char digits[16]; // "-1.79769e+308"
    const auto end =
        std::to_chars(digits, std::end(digits), value, std::chars_format::general, 6).ptr;
    put(record, {digits, end});
}

// Quirk Q59: the text's address, not its characters.
void putValue(RecordText& record, const wchar_t* handle)
{
    char digits[16];
    std::uint64_t address = reinterpret_cast<std::uintptr_t>(handle);
    for (size_t place = std::size(digits); place-- > 0; address >>= 4)
        digits[place] = "0123456789ABCDEF"[address & 0xF];
    put(record, {digits, std::end(digits)});
}

void putLowBytes(RecordText& record, std::wstring_view text)
{
    for (const wchar_t unit : text) {
        const char byte = static_cast<char>(unit & 0xFF);
        if (byte == '\0')
            return;
        put(record, {&byte, 1});
    }
}

std::optional<std::string> contentOf(const RecordText& record)
{
    if (record.isTooLong)
        return std::nullopt;
    return std::string(record.characters.data(), record.size);
}

} // namespace torvapdm
