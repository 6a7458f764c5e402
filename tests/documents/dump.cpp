#include "documents/dump.h"

#include <algorithm>
#include <charconv>
#include <cstdio>

namespace documents {

namespace {

constexpr std::string_view ellipsis = "\xE2\x80\xA6 "; // U+2026 HORIZONTAL ELLIPSIS and a space

// Removes and returns the text before the next gap, and removes the gap.
std::string_view takeField(std::string_view& line)
{
    const size_t end = std::min(line.find("  "), line.size());
    const std::string_view field = line.substr(0, end);
    line.remove_prefix(std::min(line.find_first_not_of(' ', end), line.size()));
    return field;
}

std::optional<size_t> numberOf(std::string_view text, int base)
{
    size_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
    const bool isNumber = error == std::errc() && end == text.data() + text.size();
    return isNumber ? std::optional(number) : std::nullopt;
}

std::string hexadecimal(size_t number)
{
    char digits[2 * sizeof number + 1];
    std::snprintf(digits, sizeof digits, "%02zX", number);
    return digits;
}

std::string shown(const std::optional<char>& byte)
{
    return byte ? hexadecimal(size_t{static_cast<unsigned char>(*byte)}) : "??";
}

bool isUpperHexadecimal(std::string_view text)
{
    return text.size() >= 2 && text.find_first_not_of("0123456789ABCDEF") == text.npos;
}

// Hexadecimal bytes separated by single spaces.
bool addHexadecimal(std::string_view field, Dump& dump)
{
    for (size_t at = 0; at < field.size(); at += 3) {
        const std::string_view digits = field.substr(at, 2);
        const bool isLast = at + 2 >= field.size();
        const bool isAny = digits == "??";
        if (!isAny && !isUpperHexadecimal(digits))
            return false;
        if (!isLast && (field[at + 2] != ' ' || at + 3 == field.size()))
            return false;
        dump.bytes.push_back(isAny ? std::nullopt
                                   : std::optional(static_cast<char>(*numberOf(digits, 16))));
    }
    return !field.empty();
}

// Text up to its closing quote; gaps inside are part of the text.
bool addText(std::string_view line, Dump& dump)
{
    const size_t end = line.find('"', 1);
    if (end == line.npos || end == 1)
        return false;
    dump.bytes.insert(dump.bytes.end(), line.begin() + 1, line.begin() + std::ptrdiff_t(end));
    line.remove_prefix(end + 1);
    return takeField(line).empty();
}

bool addLeftOut(std::string_view field, Dump& dump)
{
    constexpr std::string_view unit = " bytes";
    field.remove_prefix(ellipsis.size());
    dump.leavesOut = true;
    dump.isOpenEnded = field == "any";
    if (dump.isOpenEnded)
        return true;
    if (!field.ends_with(unit))
        return false;
    const size_t count = numberOf(field.substr(0, field.size() - unit.size()), 10).value_or(0);
    dump.bytes.resize(dump.bytes.size() + count);
    return count > 0;
}

// The error in the line; empty if there is none.
std::string addRow(std::string_view line, Dump& dump)
{
    if (dump.isOpenEnded)
        return "a row after the rest";
    const std::string_view offset = takeField(line);
    if (!isUpperHexadecimal(offset))
        return "no offset";
    if (numberOf(offset, 16) != dump.bytes.size())
        return "offset " + std::string(offset) + " where " + hexadecimal(dump.bytes.size()) +
               " is due";
    const bool hasBytes = line.starts_with('"')        ? addText(line, dump)
                          : line.starts_with(ellipsis) ? addLeftOut(takeField(line), dump)
                                                       : addHexadecimal(takeField(line), dump);
    return hasBytes ? "" : "no bytes";
}

} // namespace

Dump parseDump(const FencedBlock& block)
{
    Dump dump;
    size_t number = block.line;
    const auto fault = [&](const std::string& what) {
        return "line " + std::to_string(number) + ": " + what;
    };
    if (block.name.empty() || block.lines.empty())
        dump.fault = fault("a dump without a name or without rows");
    for (size_t i = 0; i < block.lines.size() && dump.fault.empty(); ++i) {
        ++number;
        if (const std::string wrong = addRow(block.lines[i], dump); !wrong.empty())
            dump.fault = fault(wrong);
    }
    return dump;
}

std::string difference(std::string_view bytes, const Dump& dump)
{
    const size_t shared = std::min(bytes.size(), dump.bytes.size());
    for (size_t i = 0; i < shared; ++i)
        if (dump.bytes[i] && *dump.bytes[i] != bytes[i])
            return "offset " + hexadecimal(i) + ": " + shown(bytes[i]) + ", shown is " +
                   shown(dump.bytes[i]);
    if (shared < dump.bytes.size() || (shared < bytes.size() && !dump.isOpenEnded))
        return std::to_string(bytes.size()) + " bytes, shown are " +
               std::to_string(dump.bytes.size());
    return "";
}

std::optional<std::string> bytesOf(const Dump& dump)
{
    if (dump.leavesOut)
        return std::nullopt;
    std::string bytes;
    for (const std::optional<char>& byte : dump.bytes)
        bytes += byte.value_or('0');
    return bytes;
}

std::string asBlock(const std::string& name, std::string_view bytes)
{
    constexpr size_t bytesInARow = 16;
    std::string block = "```dump " + name;
    for (size_t i = 0; i < bytes.size(); ++i)
        block += (i % bytesInARow == 0 ? '\n' + hexadecimal(i) + "  " : " ") + shown(bytes[i]);
    return block + "\n```\n";
}

} // namespace documents
