#include "fuzz/command_text_rule.h"

#include "fuzz/plain_text.h"

namespace fuzzing {

using torvapdm::Command;
using Kind = Command::Kind;
using namespace std::string_literals;

namespace {

constexpr long long untilTheEnd = 1LL << 40;

// The piece of so many bytes, or of as many as there are. A length below 0 is one that wrapped
// round: it runs past the end too.
std::string_view pieceOf(std::string_view text, long long begin, long long length)
{
    return between(text, begin, length < 0 ? untilTheEnd : begin + length);
}

std::wstring widenedBytes(std::string_view bytes)
{
    std::wstring wide;
    for (const char byte : bytes) {
        const int value = static_cast<unsigned char>(byte);
        wide += static_cast<wchar_t>(value < 128 ? value : 0xFF00 + value);
    }
    return wide;
}

} // namespace

Command plainRequest(std::string_view text)
{
    const long long blank = firstOf(text, ' ');
    if ((blank < 0 ? text : between(text, 0, blank)) == "CHECKIN")
        return {Kind::checkIn, 0, {}};
    if (blank < 0 || text.size() < 3)
        return {};
    const long long found = firstOf(text, '\n');
    const long long lineFeed = found < 0 ? untilTheEnd : found;

    const std::string_view head = pieceOf(text, 3, lineFeed);
    const long long headBlank = firstOf(head, ' ');
    const auto id = plainNumber(std::string(headBlank < 0 ? head : between(head, 0, headBlank)));
    if (!id || *id < -2147483648LL || *id > 2147483647LL)
        return {};

    const std::string_view fromBlank = pieceOf(text, blank, lineFeed - 2);
    if (fromBlank.empty())
        return {};
    const std::string_view path =
        pieceOf(fromBlank, 1, static_cast<long long>(fromBlank.size()) - 2);
    return {path.empty() ? Kind::newFile : Kind::open, static_cast<std::int32_t>(*id),
            widenedBytes(path)};
}

std::vector<std::string> commandTextSeeds()
{
    return {
        "\xEF\xBB\xBF"
        "12 C:\\parts\\a.mcam\n"s,
        "\xEF\xBB\xBF"
        "7 C:\\a b c.mcam\r\n"s,
        "\xEF\xBB\xBF"
        "7 \n"s,
        "\xEF\xBB\xBF"
        "-5 x\n"s,
        "\xEF\xBB\xBF"
        "2147483647 C:\\\xC4.mcam\n"s,
        "\xEF\xBB\xBF"
        "-2147483649 x\n"s,
        "\xEF\xBB\xBF"
        "12 abcd\nsecond line\n"s,
        "\xEF\xBB\xBF"
        "12 no line feed"s,
        "a\nb5 path to\n"s,
        "\nab5 path\n"s,
        "ab\n5 C:\\a\n"s,
        "\xEF\xBB\xBF\t 12 x\n"s,
        "CHECKIN"s,
        "CHECKIN C:\\a.mcam\n"s,
        "CHECKIN\n"s,
        "\xEF\xBB\xBF"
        "1 a\0b\n"s,
        "\xEF\xBB\xBF"
        "1 "s +
            std::string(300, 'p') + "\n",
    };
}

std::vector<std::string> commandTextTokens()
{
    return {"\xEF\xBB\xBF"s,        "CHECKIN"s,     " "s,          "\n"s, "\r\n"s, "12"s,
            "2147483647"s,          "-2147483648"s, "2147483648"s, "+"s,  "C:\\"s, ".mcam"s,
            "99999999999999999999"s};
}

} // namespace fuzzing
