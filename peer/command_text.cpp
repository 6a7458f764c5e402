#include "peer/command_text.h"

#include "peer/command_file.h"
#include "peer/leading_number.h"

#include <algorithm>
#include <limits>

namespace zemlink {
namespace {

constexpr std::string_view mark = "\xEF\xBB\xBF";
constexpr std::string_view checkInWord = "CHECKIN";

std::string_view part(std::string_view text, size_t from, size_t length)
{
    return from < text.size() ? text.substr(from, length) : std::string_view();
}

std::optional<std::int32_t> leadingId(std::string_view text)
{
    using Limits = std::numeric_limits<std::int32_t>;
    const auto id = leadingNumber(text);
    const bool isInRange = id && *id >= Limits::min() && *id <= Limits::max();
    return isInRange ? std::optional(static_cast<std::int32_t>(*id)) : std::nullopt;
}

// Deliberate: the rest of the line from the first blank on, without its first and its last byte and
// whatever those are. A carriage return stays in the path, and without a line feed the path loses
// its last byte; the add-in reads it so, and this tells what it reads. Empty when a line feed as
// the third byte leaves nothing to take a byte from.
std::optional<std::string> pathIn(std::string_view bytes, size_t blank, size_t lineFeed)
{
    const std::string_view rest = part(bytes, blank, lineFeed - 2);
    if (rest.empty())
        return std::nullopt;
    return std::string(part(rest, 1, rest.size() < 2 ? 0 : rest.size() - 2));
}

bool isPlain(std::string_view text)
{
    return std::all_of(
        text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

void addRemarks(CommandText& text, std::string_view bytes)
{
    const auto add = [&](bool holds, const char* remark) {
        if (holds)
            text.remarks.emplace_back(remark);
    };
    const size_t lineFeed = bytes.find('\n');
    add(!bytes.starts_with(mark),
        "It does not start with a byte-order mark; three bytes are skipped all the same.");
    add(lineFeed == bytes.npos, "It has no line feed: the path loses its last character.");
    add(text.path.ends_with('\r'), "A carriage return stays at the end of the path.");
    add(!text.path.ends_with('\r') && !isPlain(text.path),
        "The path is not plain ASCII: the host opens another one.");
    add(lineFeed != bytes.npos && lineFeed + 1 < bytes.size(),
        "Bytes follow the first line; they may become part of the path.");
    add(text.kind == RequestKind::open && text.id == -1,
        "The id -1 stands for no request: nothing is opened.");
}

CommandText readCheckIn(std::string_view bytes)
{
    return {RequestKind::checkIn, 0, std::string(part(bytes, checkInWord.size() + 1, bytes.npos))};
}

CommandText readOpening(std::string_view bytes)
{
    const size_t blank = bytes.find(' ');
    if (bytes.size() < mark.size() || blank == bytes.npos)
        return {RequestKind::malformed, 0, {}, {"It is neither a check-in nor an open request."}};
    const size_t lineFeed = bytes.find('\n');
    const std::string_view idText = part(bytes, mark.size(), lineFeed);
    const auto id = leadingId(idText.substr(0, idText.find(' ')));
    if (!id)
        return {RequestKind::malformed, 0, {}, {"Its id is no number of 32 bits."}};
    std::optional<std::string> path = pathIn(bytes, blank, lineFeed);
    if (!path)
        return {RequestKind::malformed, 0, {}, {"Its first line is too short to hold a path."}};
    const auto kind = path->empty() ? RequestKind::newFile : RequestKind::open;
    CommandText text{kind, *id, std::move(*path)};
    addRemarks(text, bytes);
    return text;
}

} // namespace

CommandText readCommandText(std::string_view bytes)
{
    if (bytes.empty())
        return {};
    const bool isCheckIn = bytes.substr(0, bytes.find(' ')) == checkInWord;
    CommandText text = isCheckIn ? readCheckIn(bytes) : readOpening(bytes);
    if (bytes.size() > companion::longestRequestBytes)
        text.remarks.emplace_back("It is longer than 65536 bytes: the add-in stops reading.");
    return text;
}

std::string requestName(RequestKind kind)
{
    switch (kind) {
    case RequestKind::none:
        return "none";
    case RequestKind::checkIn:
        return "check-in";
    case RequestKind::newFile:
        return "new file";
    case RequestKind::open:
        return "open";
    case RequestKind::malformed:
        break;
    }
    return "malformed";
}

} // namespace zemlink
