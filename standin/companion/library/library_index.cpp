#include "standin/companion/library/library_index.h"

#include "peer/numbers.h"
#include "peer/lines.h"

#include <algorithm>
#include <limits>
#include <optional>

namespace companion {
namespace {

constexpr size_t fieldCount = 6;
constexpr std::int64_t mostNumber = std::numeric_limits<std::int32_t>::max();

std::wstring_view trim(std::wstring_view text)
{
    const size_t first = text.find_first_not_of(L" \t\r\n");
    if (first == std::wstring_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(L" \t\r\n") - first + 1);
}

// The description comes last and keeps its bars.
std::vector<std::wstring_view> splitFields(std::wstring_view line)
{
    std::vector<std::wstring_view> fields;
    size_t bar = line.find(L'|');
    while (bar != std::wstring_view::npos && fields.size() + 1 < fieldCount) {
        fields.push_back(trim(line.substr(0, bar)));
        line.remove_prefix(bar + 1);
        bar = line.find(L'|');
    }
    fields.push_back(trim(line));
    return fields;
}

// A name is a folder's name, so it holds nothing that a path would take apart.
bool isFolderName(std::wstring_view name)
{
    return !name.empty() && name.find_first_of(L"\\/:*?\"<>") == std::wstring_view::npos &&
           name.find_first_not_of(L'.') != std::wstring_view::npos;
}

std::optional<LibraryItem> readItem(std::wstring_view line)
{
    const std::vector<std::wstring_view> fields = splitFields(line);
    if (fields.size() != fieldCount || !isFolderName(fields[1]))
        return std::nullopt;
    const auto number = peer::parseNumber(fields[0], 1, mostNumber);
    const auto version = peer::parseNumber(fields[2], 1, mostNumber);
    const auto ncPath = peer::parseNumber(fields[3], 0, mostNumber);
    if (!number || !version || !ncPath)
        return std::nullopt;
    return LibraryItem{.number = static_cast<std::int32_t>(*number),
                       .name = std::wstring(fields[1]),
                       .version = static_cast<std::int32_t>(*version),
                       .ncPath = static_cast<std::int32_t>(*ncPath),
                       .machine = std::wstring(fields[4]),
                       .description = std::wstring(fields[5])};
}

void readLine(std::wstring_view line, int lineNumber, LibraryIndex& index)
{
    const std::wstring_view text = trim(line);
    if (text.empty() || text.starts_with(L'#'))
        return;
    auto item = readItem(text);
    if (item && findName(index, item->name) == nullptr &&
        findNumber(index, item->number) == nullptr) {
        item->line = lineNumber;
        index.items.push_back(*item);
    } else {
        index.badLines.push_back(lineNumber);
    }
}

template <class Condition>
const LibraryItem* findWhere(const LibraryIndex& index, const Condition& condition)
{
    const auto found = std::find_if(index.items.begin(), index.items.end(), condition);
    return found == index.items.end() ? nullptr : &*found;
}

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

LibraryIndex readLibraryIndex(std::wstring_view text)
{
    LibraryIndex index;
    if (text.starts_with(L'\xFEFF'))
        text.remove_prefix(1);
    for (int lineNumber = 1; !text.empty(); ++lineNumber) {
        const size_t end = std::min(text.find(L'\n'), text.size() - 1);
        readLine(text.substr(0, end + 1), lineNumber, index);
        text.remove_prefix(end + 1);
    }
    return index;
}

const LibraryItem* findItem(const LibraryIndex& index, std::wstring_view nameOrNumber)
{
    return findWhere(
        index,
        [&](const LibraryItem& item) {
            return peer::isSameIgnoringCase(item.name, nameOrNumber) ||
                   std::to_wstring(item.number) == nameOrNumber;
        });
}

const LibraryItem* findName(const LibraryIndex& index, std::wstring_view name)
{
    return findWhere(
        index, [&](const LibraryItem& item) { return peer::isSameIgnoringCase(item.name, name); });
}

const LibraryItem* findNumber(const LibraryIndex& index, std::int32_t number)
{
    return findWhere(
        index, [&](const LibraryItem& item) { return item.number == number; });
}

std::wstring versionFile(const LibraryItem& item)
{
    return item.name + L"\\v" + std::to_wstring(item.version) + L".mcam";
}

std::string withVersion(std::string_view index, int line, std::int32_t version)
{
    const size_t nameBar = index.find('|', startOfLine(index, line));
    const size_t field = index.find('|', nameBar + 1) + 1;
    const size_t first = index.find_first_not_of(" \t", field);
    const size_t end = index.find_first_of(" \t|", first);
    std::string changed(index.substr(0, first));
    changed += std::to_string(version);
    changed += index.substr(end);
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
