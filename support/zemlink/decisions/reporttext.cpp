#include "zemlink/decisions/reporttext.h"

namespace zemlink {
namespace {

bool isCapital(char c)
{
    return c >= 'A' && c <= 'Z';
}

std::string label(const std::string& key)
{
    if (key.empty() || isCapital(key.front())) {
        return key;
    }
    std::string words;
    for (const char c : key) {
        words += isCapital(c) ? std::string{' ', static_cast<char>(c - 'A' + 'a')} : std::string{c};
    }
    return words;
}

// A control character as `<0D>`: it would break the line, and it is what one looks for.
std::string visible(const std::string& text)
{
    constexpr char digits[] = "0123456789ABCDEF";
    std::string shown;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        shown += byte < ' ' ? std::string{'<', digits[byte >> 4], digits[byte & 15], '>'}
                            : std::string{c};
    }
    return shown;
}

std::string scalarText(const Report& value)
{
    if (value.is_boolean()) {
        return value.get<bool>() ? "yes" : "no";
    }
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

// The lines of the entry, the first with a dash in the place of its last two blanks.
std::string entryText(const Report& entry, const std::string& indent)
{
    if (!isBranch(entry)) {
        return indent + "- " + scalarText(entry) + '\n';
    }
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
    for (const auto& [key, value] : branch.items()) {
        lines += branch.is_array() ? entryText(value, indent) : memberText(key, value, indent);
    }
    return lines;
}

} // namespace

std::string asText(const Report& report)
{
    return branchText(report, "");
}

} // namespace zemlink
