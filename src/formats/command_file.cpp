#include "formats/command_file.h"

#include "formats/decimal.h"

#include <algorithm>
#include <stdexcept>

namespace torvapdm {

namespace {

constexpr size_t byteOrderMarkLength = 3;

// Quirk Q1: the three leading bytes are skipped unchecked, and the length of the first line,
// counted from byte 0, bounds the text after them: "xyz5 a\n" opens "a" as request 5.
std::string_view idText(std::string_view text, size_t lineFeed)
{
    const std::string_view head = text.substr(byteOrderMarkLength, lineFeed);
    return head.substr(0, head.find(' '));
}

// Quirk Q2: the path is a piece two bytes shorter than the line, less its first and its last byte.
// The piece starts at the first space of the text, wherever that is, and can run into later lines.
// A carriage return stays in the path ("xyz7 a\r\n" opens "a\r"); without a line feed the last byte
// is lost ("xyz7 abc" opens "ab"). With a line feed at byte 0 or 1 the length wraps around and is
// clipped at the end of the text; at byte 2 there is nothing to cut, and the command is malformed.
std::string_view pathText(std::string_view text, size_t lineFeed)
{
    const std::string_view piece = text.substr(text.find(' '), lineFeed - 2);
    return piece.substr(1, piece.size() - 2);
}

// Quirk Q3: no code page and no UTF-8. A byte above 127 becomes the unit of its negative value,
// 0xC4 becomes U+FFC4, so only ASCII paths arrive as they were written.
std::wstring widenEachByte(std::string_view bytes)
{
    std::wstring wide(bytes.size(), L'\0');
    std::transform(bytes.begin(), bytes.end(), wide.begin(), [](char byte) {
        return static_cast<wchar_t>(static_cast<std::uint16_t>(static_cast<signed char>(byte)));
    });
    return wide;
}

Command parseOpenRequest(std::string_view text)
{
    const size_t lineFeed = text.find('\n');
    const auto id = parseDecimal(idText(text, lineFeed));
    if (!id)
        return {};
    std::wstring path = widenEachByte(pathText(text, lineFeed));
    const auto kind = path.empty() ? Command::Kind::newFile : Command::Kind::open;
    return {kind, {*id, std::move(path)}};
}

} // namespace

Command parseCommand(std::string_view text)
{
    if (text.substr(0, text.find(' ')) == "CHECKIN")
        return {Command::Kind::checkIn, {}};
    try {
        return parseOpenRequest(text);
    } catch (const std::out_of_range&) { // substr: the text has no space or fewer than three bytes
        return {};
    }
}

} // namespace torvapdm
