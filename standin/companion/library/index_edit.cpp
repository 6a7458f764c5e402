#include "standin/companion/library/index_edit.h"

namespace companion {
namespace {

constexpr std::string_view heading =
    "# The part library. One part a line; a line that starts with # is a comment.\n"
    "# number | name | version | NC path | machine definition | description\n";

size_t startOfLine(std::string_view text, int line)
{
    size_t start = 0;
    for (int i = 1; i < line; ++i)
        start = text.find('\n', start) + 1;
    return start;
}

} // namespace

std::string withVersion(std::string_view index, int line, std::int32_t version)
{
    const size_t nameBar = index.find('|', startOfLine(index, line));
    const size_t field = index.find('|', nameBar + 1) + 1;
    const size_t first = index.find_first_not_of(" \t", field);
    const size_t behind = index.find_first_of(" \t|", first);
    std::string changed(index.substr(0, first));
    changed += std::to_string(version);
    changed += index.substr(behind);
    return changed;
}

std::string withLine(std::string_view index, std::string_view line)
{
    std::string changed(index.empty() ? heading : index);
    if (!changed.ends_with('\n'))
        changed += '\n';
    changed += line;
    changed += '\n';
    return changed;
}

std::wstring indexLine(const LibraryItem& item)
{
    return std::to_wstring(item.number) + L" | " + item.name + L" | " +
           std::to_wstring(item.version) + L" | " + std::to_wstring(item.ncPath) + L" | " +
           item.machine + L" | " + item.description;
}

} // namespace companion
