#include "fuzz/differences.h"

#include <cstdio>

namespace fuzzing {

namespace {

// Escape sequence with this letter and at least this many digits.
std::string escaped(char letter, int digits, unsigned value)
{
    char text[16];
    std::snprintf(text, sizeof text, "\\%c%0*X", letter, digits, value);
    return text;
}

bool isPlain(unsigned value)
{
    return value >= 0x20 && value < 0x7F && value != '\\' && value != '"';
}

} // namespace

std::string shown(std::string_view bytes)
{
    std::string text = "\"";
    for (const char byte : bytes) {
        const unsigned value = static_cast<unsigned char>(byte);
        text += isPlain(value) ? std::string(1, byte) : escaped('x', 2, value);
    }
    return text + '"';
}

std::string shown(const std::wstring& wide)
{
    std::string text = "L\"";
    for (const wchar_t unit : wide) {
        const auto value = static_cast<unsigned>(unit);
        text += isPlain(value) ? std::string(1, static_cast<char>(unit)) : escaped('u', 4, value);
    }
    return text + '"';
}

std::string shown(bool yes)
{
    return yes ? "true" : "false";
}

std::string shown(double number)
{
    char text[64];
    std::snprintf(text, sizeof text, "%a (%.17g)", number, number);
    return text;
}

bool isSame(double a, double b)
{
    const bool bothAreNoNumber = a != a && b != b;
    return bothAreNoNumber || a == b;
}

} // namespace fuzzing
