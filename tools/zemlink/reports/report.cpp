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

// `<0D>` or `<202E>`
std::string codeText(wchar_t c)
{
    const char bytes[] = {static_cast<char>(c >> 8), static_cast<char>(c)};
    return '<' + hexadecimal({c > 0xFF ? bytes : bytes + 1, std::end(bytes)}) + '>';
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

std::string hexadecimal(std::string_view bytes)
{
    constexpr char digits[] = "0123456789ABCDEF";
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        text += {digits[byte >> 4], digits[byte & 15]};
    }
    return text;
}

std::string visible(const std::string& text)
{
    std::wstring shown;
    for (const wchar_t c : peer::fromUtf8(text))
        shown += isHidden(c) ? peer::fromUtf8(codeText(c)) : std::wstring{c};
    return peer::toUtf8(shown);
}

Outcome failure(const std::string& name, const std::string& what, const std::string& advice,
                int exitCode)
{
    Report error{{"name", name}, {"what", what}};
    if (!advice.empty())
        error["do"] = advice;
    return {Report{{"error", error}}, exitCode};
}

std::string coloured(const std::string& text)
{
    constexpr std::string_view problemStart = "  - name: ", nothing = "problems: none\n";
    constexpr std::string_view red = "\x1B[1;31m", green = "\x1B[32m", plain = "\x1B[0m";
    if (text.starts_with(nothing))
        return std::string("problems: ").append(green).append("none").append(plain) +
               text.substr(nothing.size() - 1);
    if (!text.starts_with("problems:\n"))
        return text;
    std::string result;
    for (size_t at = 0; at < text.size();) {
        const size_t end = std::min(text.find('\n', at), text.size());
        const std::string line = text.substr(at, end - at);
        if (line.starts_with(problemStart))
            result.append(problemStart).append(red).append(line, problemStart.size()).append(plain);
        else
            result += line;
        result += '\n';
        at = end + 1;
    }
    return result;
}

std::string jsonText(const Report& report, JsonLayout layout)
{
    const int indent = layout == JsonLayout::oneLine ? -1 : 2;
    return report.dump(indent, ' ', false, Report::error_handler_t::replace) + '\n';
}

std::string asText(const Report& report)
{
    return branchText(report, "");
}

} // namespace zemlink
