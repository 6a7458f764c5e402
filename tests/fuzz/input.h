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
#include <utility>

namespace fuzzing {

// Decodes a UTF-16 string from these bytes.
inline std::wstring wideText(std::string_view bytes)
{
    const auto valueAt = [&](size_t i) { return static_cast<unsigned char>(bytes[i]); };
    std::wstring text;
    for (size_t i = 0; i < bytes.size(); ++i)
        if (valueAt(i) == 1 && i + 2 < bytes.size()) {
            text += static_cast<wchar_t>(valueAt(i + 1) << 8 | valueAt(i + 2));
            i += 2;
        } else {
            text += static_cast<wchar_t>(valueAt(i));
        }
    return text;
}

// Sign-extends each byte to a UTF-16 code unit, as the add-in does with the bytes of a file.
inline std::wstring signedUnits(std::string_view bytes)
{
    std::wstring text;
    for (const char byte : bytes)
        text += static_cast<wchar_t>(static_cast<signed char>(byte) & 0xFFFF);
    return text;
}

// Zero-extends each byte to a UTF-16 code unit, as the C runtime does in the standard locale.
inline std::wstring unsignedUnits(std::string_view bytes)
{
    std::wstring text;
    for (const char byte : bytes)
        text += static_cast<wchar_t>(static_cast<unsigned char>(byte));
    return text;
}

class Input {
public:
    explicit Input(std::string_view bytes) : rest_(bytes) {}

    bool isAtEnd() const { return rest_.empty(); }

    template <class Number>
    Number number()
    {
        Number value{};
        const size_t taken = std::min(sizeof value, rest_.size());
        std::copy_n(rest_.data(), taken, reinterpret_cast<char*>(&value));
        rest_.remove_prefix(taken);
        return value;
    }

    std::string_view field()
    {
        const std::string_view taken = rest_.substr(0, rest_.find('\x1F'));
        rest_.remove_prefix(std::min(taken.size() + 1, rest_.size()));
        return taken;
    }
    std::string_view rest() { return std::exchange(rest_, {}); }
    std::wstring wideField() { return wideText(field()); }
    std::wstring wideRest() { return wideText(rest()); }

private:
    std::string_view rest_;
};

// Encodes a number for a seed.
template <class Number>
std::string raw(Number value)
{
    return {reinterpret_cast<const char*>(&value), sizeof value};
}

} // namespace fuzzing
