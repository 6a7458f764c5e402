#include "standin/companion/library/part_summary.h"

#include <algorithm>

namespace companion {
namespace {

std::string_view takeLine(std::string_view& text)
{
    const size_t end = std::min(text.find('\n'), text.size() - 1);
    std::string_view line = text.substr(0, end + 1);
    text.remove_prefix(end + 1);
    while (line.ends_with('\n') || line.ends_with('\r'))
        line.remove_suffix(1);
    return line;
}

} // namespace

int countOperations(std::string_view partFile)
{
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (partFile.starts_with(byteOrderMark))
        partFile.remove_prefix(byteOrderMark.size());
    int operations = 0;
    while (!partFile.empty())
        operations += takeLine(partFile) == "[operation]" ? 1 : 0;
    return operations;
}

} // namespace companion
