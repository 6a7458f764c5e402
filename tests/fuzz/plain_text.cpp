#include "fuzz/plain_text.h"

#include <algorithm>
#include <cstdlib>

namespace fuzzing {

bool hasAnywhere(std::string_view text, std::string_view part)
{
    for (size_t at = 0; at + part.size() <= text.size(); ++at) {
        size_t same = 0;
        while (same < part.size() && text[at + same] == part[same])
            ++same;
        if (same == part.size())
            return true;
    }
    return false;
}

std::wstring widened(std::string_view ascii)
{
    return {ascii.begin(), ascii.end()};
}

std::optional<std::int64_t> plainNumber(const std::string& text)
{
    char* end = nullptr;
    const long long number = std::strtoll(text.c_str(), &end, 10);
    return end == text.c_str() ? std::nullopt : std::optional<std::int64_t>(number);
}

std::int32_t plainNumberOrZero(const std::wstring& text)
{
    std::string narrow;
    for (const wchar_t unit : text)
        narrow += unit < 0x80 ? static_cast<char>(unit) : '?';
    const std::int64_t number = plainNumber(narrow).value_or(0);
    return static_cast<std::int32_t>(
        std::clamp<std::int64_t>(number, -2147483647LL - 1, 2147483647LL));
}

std::vector<std::string> linesAsRead(std::string_view file)
{
    std::vector<std::string> lines;
    std::string line;
    for (const char byte : file) {
        line += byte;
        if (byte == '\n' || line.size() == 1023) {
            lines.push_back(line.c_str());
            line.clear();
        }
    }
    if (!line.empty())
        lines.push_back(line.c_str());
    return lines;
}

} // namespace fuzzing
