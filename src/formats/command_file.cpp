#include "formats/command_file.h"

#include "formats/decimal.h"

#include <algorithm>
#include <stdexcept>

namespace torvapdm {

namespace {

constexpr size_t byteOrderMarkLength = 3;

// Deliberate: the three leading bytes are skipped unseen, and the number is looked for in as many
// bytes as the first line has, counted from behind them. One would expect a check for the mark and
// the line's end as the bound; any three bytes are accepted. "xyz5 a\n" opens "a" as request 5.
std::string_view idText(std::string_view text, size_t lineFeed)
{
    const std::string_view head = text.substr(byteOrderMarkLength, lineFeed);
    return head.substr(0, head.find(' '));
}

// Deliberate: the path loses exactly its leading blank and one byte at its end, within a piece that
// is two bytes shorter than the line. For a one-line request that is the text between the blank and
// the line feed. One would expect a trim; instead a carriage return stays ("xyz7 a\r\n" opens
// "a\r"), and without a line feed the last byte is lost ("xyz7 abc" opens "ab"). With a line feed
// among the first two bytes the length wraps round and is clipped at the text's end; as the third
// byte it leaves nothing to cut, and the request is malformed.
std::string_view pathText(std::string_view text, size_t lineFeed)
{
    const std::string_view piece = text.substr(text.find(' '), lineFeed - 2);
    return piece.substr(1, piece.size() - 2);
}

// Deliberate: no code page and no UTF-8. A byte above 127 becomes the unit of its negative value
// (0xC4 becomes U+FFC4), so that only ASCII paths arrive as they were written.
std::wstring widenEachByte(std::string_view bytes)
{
    std::wstring wide(bytes.size(), L'\0');
    std::transform(bytes.begin(), bytes.end(), wide.begin(), [](char byte) {
        return static_cast<wchar_t>(static_cast<std::uint16_t>(static_cast<signed char>(byte)));
    });
    return wide;
}

CommandRequest extractOpenRequest(std::string_view text)
{
    const size_t lineFeed = text.find('\n');
    const auto id = decimalNumber(idText(text, lineFeed));
    if (!id)
        return {};
    std::wstring path = widenEachByte(pathText(text, lineFeed));
    const auto kind = path.empty() ? CommandRequest::Kind::newFile : CommandRequest::Kind::open;
    return {kind, *id, std::move(path)};
}

} // namespace

CommandRequest interpretCommandText(std::string_view text)
{
    if (text.substr(0, text.find(' ')) == "CHECKIN")
        return {CommandRequest::Kind::checkIn, 0, {}};
    try {
        return extractOpenRequest(text);
    } catch (const std::out_of_range&) {
        return {};
    }
}

} // namespace torvapdm
