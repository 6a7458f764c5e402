#include "support/lines.h"

#include <algorithm>
#include <iterator>

namespace testing_support {

size_t count(const Lines& lines, const std::wstring& text)
{
    return static_cast<size_t>(std::count_if(
        lines.begin(), lines.end(),
        [&](const std::wstring& line) { return line.find(text) != std::wstring::npos; }));
}

Lines linesThatStart(const Lines& lines, const std::wstring& text)
{
    Lines found;
    std::copy_if(lines.begin(), lines.end(), std::back_inserter(found),
                 [&](const std::wstring& line) { return line.rfind(text, 0) == 0; });
    return found;
}

} // namespace testing_support
