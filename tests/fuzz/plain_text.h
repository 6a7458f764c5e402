// Plain searches and numbers for the plain rules: slow, obvious, and none of the decisions' own.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fuzzing {

// Where a character stands first or last; -1 when it stands nowhere.
template <class Text>
long long firstOf(const Text& text, char sought)
{
    for (size_t i = 0; i < text.size(); ++i)
        if (text[i] == static_cast<typename Text::value_type>(sought))
            return static_cast<long long>(i);
    return -1;
}

template <class Text>
long long lastOf(const Text& text, char sought)
{
    long long last = -1;
    for (size_t i = 0; i < text.size(); ++i)
        if (text[i] == static_cast<typename Text::value_type>(sought))
            last = static_cast<long long>(i);
    return last;
}

bool hasAnywhere(std::string_view text, std::string_view part);

// The characters from `begin` up to `end`, without it; what lies outside the text is left out.
template <class Text>
Text between(const Text& text, long long begin, long long end)
{
    Text cut;
    for (long long i = begin; i < end && i < static_cast<long long>(text.size()); ++i)
        cut += text[static_cast<size_t>(i)];
    return cut;
}

// The same of a view, which stays one.
inline std::string_view between(const std::string_view& text, long long begin, long long end)
{
    const long long size = static_cast<long long>(text.size());
    const long long last = end < size ? end : size;
    if (begin >= last)
        return {};
    return {text.data() + begin, static_cast<size_t>(last - begin)};
}

// ASCII letters, digits and signs alone, as a wide text.
std::wstring widened(std::string_view ascii);

// The whole number at the text's beginning, behind white space and one sign, at most as large as 64
// bits hold; nothing without a digit.
std::optional<std::int64_t> plainNumber(const std::string& text);
// The same in a wide text, 0 without a digit, cut to the limits of 32 bits.
std::int32_t plainNumberOrZero(const std::wstring& text);

// The lines of a text file as a C program reads them into 1024 bytes: up to and with the line feed,
// or 1023 bytes of a longer line; each ends for it at its first zero.
std::vector<std::string> linesAsRead(std::string_view file);

} // namespace fuzzing
