#include "tools/zemlink/reports/report.h"

#include "peer/text.h"

namespace zemlink {
namespace {

bool isCapital(char c)
{
    return c >= 'A' && c <= 'Z';
}

std::string label(const std::string& key)
{
    if (key.empty() || isCapital(key.front()))
        return key;
    std::string words;
    for (const char c : key)
        words += isCapital(c) ? std::string{' ', static_cast<char>(c - 'A' + 'a')} : std::string{c};
    return words;
}

bool isHidden(wchar_t c)
{
    const bool isControl = c < L' ' || (c >= 0x7F && c < 0xA0);
    const bool turnsTheLine =
        c == 0x200E || c == 0x200F || (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069);
    return isControl || turnsTheLine;
}

std::wstring hexadecimal(wchar_t c)
{
    constexpr wchar_t digits[] = L"0123456789ABCDEF";
    std::wstring text;
    for (int shift = c > 0xFF ? 12 : 4; shift >= 0; shift -= 4)
        text += digits[c >> shift & 15];
    return text;
}

std::string scalarText(const Report& value)
{
    if (value.is_boolean())
        return value.get<bool>() ? "yes" : "no";
    const std::string text = value.is_string()   ? visible(value.get<std::string>())
                             : value.is_number() ? value.dump()
                                                 : std::string();
    return text.empty() ? "none" : text;
}

bool isBranch(const Report& value)
{
    return value.is_structured() && !value.empty();
}

std::string branchText(const Report& branch, const std::string& indent);

// The lines of the entry; a dash replaces the first of the last two spaces of the first indent.
std::string entryText(const Report& entry, const std::string& indent)
{
    if (!isBranch(entry))
        return indent + "- " + scalarText(entry) + '\n';
    std::string lines = branchText(entry, indent + "  ");
    lines[indent.size()] = '-';
    return lines;
}

std::string memberText(const std::string& key, const Report& value, const std::string& indent)
{
    const std::string start = indent + label(key) + ':';
    return isBranch(value) ? start + '\n' + branchText(value, indent + "  ")
                           : start + ' ' + scalarText(value) + '\n';
}

std::string branchText(const Report& branch, const std::string& indent)
{
    std::string lines;
    for (const auto& [key, value] : branch.items())
        lines += branch.is_array() ? entryText(value, indent) : memberText(key, value, indent);
    return lines;
}

} // namespace

std::string visible(const std::string& text)
{
    std::wstring shown;
    for (const wchar_t c : peer::fromUtf8(text))
        shown += isHidden(c) ? L'<' + hexadecimal(c) + L'>' : std::wstring{c};
    return peer::toUtf8(shown);
}

std::string asText(const Report& report)
{
    return branchText(report, "");
}

} // namespace zemlink
