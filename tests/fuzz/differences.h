// Differences between a function's result and the reference implementation.
#pragma once

#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace fuzzing {

// Text as a literal: bytes and code units outside printable ASCII as \xHH and \uHHHH.
template <class Unit>
std::string shown(std::basic_string_view<Unit> text)
{
    std::string literal = "\"";
    for (const Unit unit : text) {
        const auto value = static_cast<unsigned>(std::make_unsigned_t<Unit>(unit));
        const bool isPlain = value >= 0x20 && value < 0x7F && value != '\\' && value != '"';
        char escaped[16];
        std::snprintf(escaped, sizeof escaped, sizeof unit == 1 ? "\\x%02X" : "\\u%04X", value);
        literal += isPlain ? std::string(1, static_cast<char>(value)) : escaped;
    }
    return literal + '"';
}

template <class Unit>
std::string shown(const std::basic_string<Unit>& text)
{
    return shown(std::basic_string_view<Unit>(text));
}

// Floating-point numbers are shown with full precision.
template <class Number, class = std::enable_if_t<std::is_arithmetic_v<Number>>>
std::string shown(Number number)
{
    if constexpr (std::is_integral_v<Number>)
        return std::to_string(number);
    char text[64];
    std::snprintf(text, sizeof text, "%a (%.17g)", double(number), double(number));
    return text;
}

template <class Value>
std::string shown(const std::optional<Value>& value)
{
    return value ? shown(*value) : "nothing";
}

template <class Value>
std::string shown(const std::vector<Value>& values)
{
    std::string text = "[";
    for (const Value& value : values)
        text += shown(value) + ", ";
    return text + ']';
}

// Collects the differences; empty if all values agree. NaN equals NaN.
class Differences {
public:
    template <class Value>
    void compare(const char* what, const Value& answer, const std::type_identity_t<Value>& expected)
    {
        const bool areBothNan = answer != answer && expected != expected;
        if (!areBothNan && answer != expected)
            text_ += std::string(what) + ": answered " + shown(answer) + ", expected " +
                     shown(expected) + '\n';
    }

    const std::string& text() const { return text_; }

private:
    std::string text_;
};

} // namespace fuzzing
