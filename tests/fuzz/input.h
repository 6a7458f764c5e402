// How a target decodes its arguments from a fuzzer's bytes, and how a seed encodes them:
//
//   a number     its bytes, little-endian; bytes after the input's end are 0
//   a field      the bytes up to the next 1F, or to the end
//   the rest     all remaining bytes
//
// In UTF-16 strings, each byte encodes one code unit, except that 01 is followed by the two bytes
// of a code unit, high byte first. This covers all code units for any width of wchar_t.
#pragma once

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace fuzzing {

inline constexpr char fieldEnd = '\x1F';

// Decodes a UTF-16 string from these bytes.
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

// Zero-extends each byte to a UTF-16 code unit, as the C runtime does in the standard locale.
std::wstring unsignedUnits(std::string_view bytes);

// Sign-extends each byte to a UTF-16 code unit, as the add-in does with the bytes of a file.
std::wstring signedUnits(std::string_view bytes);

// Encodes a number for a seed.
template <class Number>
std::string raw(Number value)
{
    static_assert(std::is_trivially_copyable_v<Number>);
    return {reinterpret_cast<const char*>(&value), sizeof value};
}

} // namespace fuzzing
