// Differences between a function's result and the reference implementation.
#pragma once

#include <concepts>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fuzzing {

// A value in unambiguous form: bytes and code units outside printable ASCII as \xHH and \uHHHH,
// floating-point numbers with full precision.
std::string shown(std::string_view bytes);
std::string shown(const std::wstring& text);
std::string shown(double number);
std::string shown(bool yes);

inline std::string shown(const std::string& bytes)
{
    return shown(std::string_view(bytes));
}

template <std::integral Number>
std::string shown(Number number)
{
    return std::to_string(number);
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

template <class Value>
bool isSame(const Value& a, const Value& b)
{
    return a == b;
}

// NaN equals NaN.
bool isSame(double a, double b);

// Collects the differences; empty if all values agree.
class Differences {
public:
    template <class Value>
    Differences& compare(const char* what, const Value& answer, const Value& expected)
    {
        if (!isSame(answer, expected))
            text_ += std::string(what) + ": answered " + shown(answer) + ", expected " +
                     shown(expected) + '\n';
        return *this;
    }

    const std::string& text() const { return text_; }

private:
    std::string text_;
};

} // namespace fuzzing
