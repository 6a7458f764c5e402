#include "peer/command_file.h"

#include "peer/numbers.h"
#include "peer/wire_constants.h"

#include <algorithm>
#include <limits>

namespace peer {
namespace {

bool isPlainCharacter(wchar_t c)
{
    return c >= L' ' && c <= L'~';
}

bool isPlainBytes(std::string_view text)
{
    return std::all_of(
        text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

std::string narrow(std::wstring_view text)
{
    std::string bytes;
    for (const wchar_t c : text)
        bytes += isPlainCharacter(c) ? static_cast<char>(c) : '?';
    return bytes;
}

std::string requestLine(std::int32_t id, std::string_view path)
{
    std::string request(byteOrderMark);
    request += std::to_string(id);
    request += ' ';
    request += path;
    request += '\n';
    return request;
}

std::string_view part(std::string_view text, size_t from, size_t length)
{
    return from < text.size() ? text.substr(from, length) : std::string_view();
}

std::optional<std::int32_t> parseId(std::string_view text)
{
    using Limits = std::numeric_limits<std::int32_t>;
    const auto id = parseLeadingNumber(text);
    const bool isInRange = id && *id >= Limits::min() && *id <= Limits::max();
    return isInRange ? std::optional(static_cast<std::int32_t>(*id)) : std::nullopt;
}

// Quirk Q64: the path loses its first and its last byte, whatever they are, as in the add-in.
// A carriage return stays in the path; without a line feed the path loses its last byte. Empty when
// a line feed as the third byte leaves no bytes.
std::optional<std::string> parsePath(std::string_view bytes, size_t space, size_t lineFeed)
{
    const std::string_view rest = part(bytes, space, lineFeed - 2);
    if (rest.empty())
        return std::nullopt;
    return std::string(part(rest, 1, rest.size() < 2 ? 0 : rest.size() - 2));
}

void addRemarks(HostCommand& request, std::string_view bytes)
{
    const auto add = [&](bool applies, const char* remark) {
        if (applies)
            request.remarks.emplace_back(remark);
    };
    const size_t lineFeed = bytes.find('\n');
    add(!bytes.starts_with(byteOrderMark),
        "It does not start with a byte-order mark; three bytes are skipped anyway.");
    add(lineFeed == bytes.npos, "It has no line feed: the path loses its last character.");
    add(request.path.ends_with('\r'), "A carriage return stays at the end of the path.");
    add(!request.path.ends_with('\r') && !isPlainBytes(request.path),
        "The path is not plain ASCII: the host opens a different one.");
    add(lineFeed != bytes.npos && lineFeed + 1 < bytes.size(),
        "Bytes follow the first line; they may become part of the path.");
    add(request.kind == HostCommandKind::open && request.id == -1,
        "The id -1 means no request: nothing is opened.");
}

HostCommand parseCheckIn(std::string_view bytes)
{
    return {HostCommandKind::checkIn, 0,
            std::string(part(bytes, checkInWord.size() + 1, bytes.npos))};
}

HostCommand parseOpening(std::string_view bytes)
{
    const size_t space = bytes.find(' ');
    if (bytes.size() < byteOrderMark.size() || space == bytes.npos)
        return {
            HostCommandKind::malformed, 0, {}, {"It is neither a check-in nor an open request."}};
    const size_t lineFeed = bytes.find('\n');
    const std::string_view idText = part(bytes, byteOrderMark.size(), lineFeed);
    const auto id = parseId(idText.substr(0, idText.find(' ')));
    if (!id)
        return {HostCommandKind::malformed, 0, {}, {"Its id is not a 32-bit number."}};
    std::optional<std::string> path = parsePath(bytes, space, lineFeed);
    if (!path)
        return {HostCommandKind::malformed, 0, {}, {"Its first line is too short to hold a path."}};
    const auto kind = path->empty() ? HostCommandKind::newFile : HostCommandKind::open;
    HostCommand request{kind, *id, std::move(*path)};
    addRemarks(request, bytes);
    return request;
}

} // namespace

HostCommand parseHostCommand(std::string_view bytes)
{
    if (bytes.empty())
        return {};
    const bool isCheckIn = bytes.substr(0, bytes.find(' ')) == checkInWord;
    HostCommand request = isCheckIn ? parseCheckIn(bytes) : parseOpening(bytes);
    if (bytes.size() > longestRequestBytes)
        request.remarks.emplace_back("It is longer than 65536 bytes: the add-in stops reading.");
    return request;
}

std::string hostCommandName(HostCommandKind kind)
{
    switch (kind) {
    case HostCommandKind::none:
        return "none";
    case HostCommandKind::checkIn:
        return "check-in";
    case HostCommandKind::newFile:
        return "new file";
    case HostCommandKind::open:
        return "open";
    case HostCommandKind::malformed:
        break;
    }
    return "malformed";
}

bool isPlainAscii(std::wstring_view text)
{
    return std::all_of(text.begin(), text.end(), isPlainCharacter);
}

std::optional<std::string> formatOpenRequest(std::int32_t id, std::wstring_view path)
{
    if (path.empty() || !isPlainAscii(path))
        return std::nullopt;
    const std::string request = requestLine(id, narrow(path));
    return request.size() <= longestRequestBytes ? std::optional(request) : std::nullopt;
}

std::string formatNewFileRequest(std::int32_t id)
{
    return requestLine(id, {});
}

std::string formatCheckIn(std::wstring_view name)
{
    return std::string(checkInWord) + ' ' + narrow(name);
}

} // namespace peer
