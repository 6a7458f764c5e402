// How a target takes its arguments out of a fuzzer's bytes, and how a seed is put together so that
// they come out again:
//
//   a number     its bytes, little-endian; what is missing at the input's end is 0
//   a field      the bytes up to the next 1F, or to the end
//   the rest     all that is left
//
// Wide texts are such bytes too: each is one UTF-16 unit, but for 01, which announces a unit of two
// bytes, high byte first. So every unit can be reached whatever width wchar_t has.
#pragma once

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace fuzzing {

inline constexpr char fieldEnd = '\x1F';

// The wide text that the bytes stand for.
std::wstring wideText(std::string_view bytes);

class Input {
public:
    explicit Input(std::string_view bytes) : rest_(bytes) {}

    bool isAtEnd() const { return rest_.empty(); }

    template <class Number>
    Number number()
    {
        static_assert(std::is_trivially_copyable_v<Number>);
        Number value{};
        const size_t taken = std::min(sizeof value, rest_.size());
        if (taken > 0)
            std::memcpy(&value, rest_.data(), taken);
        rest_.remove_prefix(taken);
        return value;
    }

    std::string_view field();
    std::string_view rest() { return std::exchange(rest_, {}); }
    std::wstring wideField() { return wideText(field()); }
    std::wstring wideRest() { return wideText(rest()); }

private:
    std::string_view rest_;
};

// Each byte, as a signed value, one UTF-16 unit: how the add-in widens the bytes of a file.
std::wstring signedUnits(std::string_view bytes);

// The bytes of a number in a seed.
template <class Number>
std::string raw(Number value)
{
    static_assert(std::is_trivially_copyable_v<Number>);
    return {reinterpret_cast<const char*>(&value), sizeof value};
}

} // namespace fuzzing
