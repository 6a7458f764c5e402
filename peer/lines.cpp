#include "peer/lines.h"

#include <algorithm>

namespace peer {

namespace {

wchar_t lowerCase(wchar_t c)
{
    return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c;
}

} // namespace

std::vector<std::string_view> fileLines(std::string_view bytes)
{
    std::vector<std::string_view> lines;
    while (!bytes.empty()) {
        const size_t end = std::min(bytes.find('\n'), bytes.size());
        std::string_view line = bytes.substr(0, end);
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        lines.push_back(line);
        bytes.remove_prefix(std::min(end + 1, bytes.size()));
    }
    return lines;
}

bool isSameIgnoringCase(std::wstring_view a, std::wstring_view b)
{
    return std::equal(
        a.begin(), a.end(), b.begin(), b.end(),
        [](wchar_t x, wchar_t y) { return lowerCase(x) == lowerCase(y); });
}

} // namespace peer
