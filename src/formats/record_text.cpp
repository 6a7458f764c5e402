#include "formats/record_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace torvapdm {

namespace {

// Six significant digits of a value that printf's general format writes without an exponent: as
// the number `digits / unit`, where `unit` is a power of ten.
struct Decimal {
    std::uint32_t digits;
    std::uint32_t unit;
};

// Nothing for a value with an exponent, and where the rounding of the last digit is in doubt.
std::optional<Decimal> shortDecimal(double magnitude)
{
    if (!(magnitude >= 1e-4 && magnitude < 999999))
        return std::nullopt;
    std::uint32_t unit = magnitude < 1 ? 1000000000 : 100000;
    while (magnitude * unit >= 1e6)
        unit /= 10;
    const double scaled = magnitude * unit;
    const auto digits = static_cast<std::uint32_t>(scaled);
    const double rest = scaled - digits;
    // The product is rounded too, by far less than this margin.
    if (std::abs(rest - 0.5) < 1e-6)
        return std::nullopt;
    return Decimal{digits + (rest > 0.5), unit};
}

char* writeDecimal(char* at, Decimal number)
{
    at = writeValue(at, static_cast<std::int32_t>(number.digits / number.unit));
    std::uint32_t rest = number.digits % number.unit;
    if (rest != 0)
        *at++ = '.';
    for (std::uint32_t unit = number.unit; rest != 0; rest %= unit) {
        unit /= 10;
        *at++ = static_cast<char>('0' + rest / unit);
    }
    return at;
}

} // namespace

char* writeValue(char* at, std::int32_t value)
{
    return std::to_chars(at, at + longestRecordNumber, value).ptr;
}

char* writeValue(char* at, double value)
{
    if (std::signbit(value))
        *at++ = '-';
    if (value == 0)
        return writeValue(at, 0);
    const double magnitude = std::abs(value);
    // Most values are short, and std::to_chars takes several times as long.
    if (const auto number = shortDecimal(magnitude))
        return writeDecimal(at, *number);
    // C++ libraries differ in the text of a NaN.
    if (std::isnan(value))
        return std::copy_n("nan", 3, at);
    constexpr size_t longest = 12; // "1.79769e+308"
    return std::to_chars(at, at + longest, magnitude, std::chars_format::general, 6).ptr;
}

// Quirk Q59: the text's address, not its characters.
char* writeValue(char* at, const wchar_t* handle)
{
    const auto address = reinterpret_cast<std::uintptr_t>(handle);
    for (int shift = 60; shift >= 0; shift -= 4)
        *at++ = "0123456789ABCDEF"[address >> shift & 0xF];
    return at;
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
    if (record.size > longestToolRecord)
        return std::nullopt;
    return std::string(record.characters.data(), record.size);
}

} // namespace torvapdm
