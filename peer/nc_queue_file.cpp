#include "peer/nc_queue_file.h"

#include "peer/numbers.h"
#include "peer/lines.h"
#include "peer/wire_constants.h"

#include <algorithm>
#include <limits>

namespace peer {
namespace {

constexpr std::int64_t leastNumber = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t mostNumber = std::numeric_limits<std::int32_t>::max();

// Removes the text before the first `|`, and the `|`. Empty when there is no `|`.
std::optional<std::string_view> takeUpToBar(std::string_view& rest)
{
    const size_t bar = rest.find('|');
    if (bar == std::string_view::npos)
        return std::nullopt;
    const std::string_view taken = rest.substr(0, bar);
    rest.remove_prefix(bar + 1);
    return taken;
}

// A file name cannot contain a `|`, so the group starts after the one that follows the program.
std::optional<QueueEntry> parseEntry(std::string_view line)
{
    // An embedded NUL would truncate the path.
    if (std::ranges::any_of(line, [](unsigned char c) { return c < ' ' || c == 0x7F; }))
        return std::nullopt;
    const auto word = takeUpToBar(line);
    const auto number = takeUpToBar(line);
    const auto program = takeUpToBar(line);
    if (!program || program->empty() || word != ncQueueWord)
        return std::nullopt;
    const auto pathNumber = parsePrintedNumber(*number, leastNumber, mostNumber);
    if (!pathNumber)
        return std::nullopt;
    return QueueEntry{static_cast<std::int32_t>(*pathNumber), std::string(*program),
                      std::string(line)};
}

} // namespace

QueueLines parseNcQueue(std::string_view bytes)
{
    QueueLines entries;
    for (const std::string_view line : fileLines(bytes))
        entries.push_back(parseEntry(line));
    return entries;
}

bool isQueueFileName(std::wstring_view fileName)
{
    constexpr std::wstring_view start = ncQueueStart;
    constexpr std::wstring_view end = textEnd;
    if (!fileName.starts_with(start) || !fileName.ends_with(end))
        return false;
    fileName.remove_prefix(start.size());
    fileName.remove_suffix(end.size());
    return parseNumber(fileName, leastNumber, mostNumber).has_value();
}

} // namespace peer
