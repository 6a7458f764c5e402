#include "peer/nc_queue_file.h"

#include "peer/file_lines.h"
#include "peer/numbers.h"

#include <algorithm>
#include <limits>

namespace companion {
namespace {

constexpr std::int64_t leastNumber = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t mostNumber = std::numeric_limits<std::int32_t>::max();

// Takes the text in front of the first bar off, and the bar. Empty when there is no bar.
std::optional<std::string_view> takeUpToBar(std::string_view& rest)
{
    const size_t bar = rest.find('|');
    if (bar == std::string_view::npos)
        return std::nullopt;
    const std::string_view taken = rest.substr(0, bar);
    rest.remove_prefix(bar + 1);
    return taken;
}

bool isControl(char c)
{
    return static_cast<unsigned char>(c) < ' ' || c == '\x7F';
}

// No file's name holds a bar, so the one behind the program is where the group starts.
std::optional<QueueEntry> readEntry(std::string_view line)
{
    // The system would read a path with a zero byte only up to it.
    if (std::ranges::any_of(line, isControl))
        return std::nullopt;
    const auto word = takeUpToBar(line);
    const auto number = takeUpToBar(line);
    const auto program = takeUpToBar(line);
    if (!program || program->empty() || word != "NCPATH")
        return std::nullopt;
    const auto pathNumber = readPrintedNumber(*number, leastNumber, mostNumber);
    if (!pathNumber)
        return std::nullopt;
    return QueueEntry{static_cast<std::int32_t>(*pathNumber), std::string(*program),
                      std::string(line)};
}

} // namespace

QueueLines readQueue(std::string_view bytes)
{
    QueueLines entries;
    for (const std::string_view line : fileLines(bytes))
        entries.push_back(readEntry(line));
    return entries;
}

bool isQueueFileName(std::wstring_view fileName)
{
    constexpr std::wstring_view start = L"ncqueue-";
    constexpr std::wstring_view end = L".txt";
    if (!fileName.starts_with(start) || !fileName.ends_with(end))
        return false;
    fileName.remove_prefix(start.size());
    fileName.remove_suffix(end.size());
    return readNumber(fileName, leastNumber, mostNumber).has_value();
}

} // namespace companion
