#include "documents/dump_text.h"

#include <algorithm>
#include <charconv>
#include <cstdio>

namespace documents {

namespace {

using Kind = DumpRow::Kind;

constexpr std::string_view ellipsis = "\xE2\x80\xA6 "; // three dots in one character, and a blank
constexpr std::string_view gap = "  ";

// Takes the text in front of the next gap, and the gap.
std::string_view takeField(std::string_view& line)
{
    const size_t end = std::min(line.find(gap), line.size());
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

std::string hexadecimal(size_t number, int width)
{
    char digits[2 * sizeof number + 1];
    std::snprintf(digits, sizeof digits, "%0*zX", width, number);
    return digits;
}

bool isUpperHexadecimal(std::string_view text)
{
    return text.size() >= 2 && text.find_first_not_of("0123456789ABCDEF") == text.npos;
}

// Bytes in hexadecimal, one blank between two of them.
bool readHexadecimal(std::string_view field, DumpRow& row)
{
    for (size_t at = 0; at < field.size(); at += 3) {
        const std::string_view digits = field.substr(at, 2);
        const bool isLast = at + 2 >= field.size();
        if (!isLast && (field[at + 2] != ' ' || at + 3 == field.size()))
            return false;
        if (digits == "??")
            row.bytes.emplace_back();
        else if (isUpperHexadecimal(digits))
            row.bytes.emplace_back(static_cast<char>(*numberOf(digits, 16)));
        else
            return false;
    }
    return !row.bytes.empty();
}

// Text up to its closing quote; gaps in it count as text.
bool takeText(std::string_view& line, DumpRow& row)
{
    const size_t end = line.find('"', 1);
    if (end == line.npos || end == 1)
        return false;
    row.kind = Kind::text;
    row.bytes.assign(line.begin() + 1, line.begin() + static_cast<std::ptrdiff_t>(end));
    line.remove_prefix(end + 1);
    return takeField(line).empty();
}

bool readLeftOut(std::string_view field, DumpRow& row)
{
    field.remove_prefix(ellipsis.size());
    if (field == "any") {
        row.kind = Kind::rest;
        return true;
    }
    constexpr std::string_view unit = " bytes";
    const auto count = field.ends_with(unit)
                           ? numberOf(field.substr(0, field.size() - unit.size()), 10)
                           : std::nullopt;
    row.kind = Kind::leftOut;
    row.leftOut = count.value_or(0);
    return row.leftOut > 0;
}

// Reads what stands behind the offset.
bool readBytes(std::string_view line, DumpRow& row)
{
    bool isRead = false;
    if (line.starts_with('"')) {
        isRead = takeText(line, row);
    } else {
        const std::string_view field = takeField(line);
        isRead =
            field.starts_with(ellipsis) ? readLeftOut(field, row) : readHexadecimal(field, row);
    }
    row.annotation = line;
    return isRead;
}

// What is wrong with the line, which is due at this offset; empty when nothing is.
std::string readRow(std::string_view line, size_t due, DumpRow& row)
{
    const std::string_view offset = takeField(line);
    if (!isUpperHexadecimal(offset))
        return "no offset";
    if (numberOf(offset, 16) != due)
        return "offset " + std::string(offset) + " where " + hexadecimal(due, 2) + " is due";
    return readBytes(line, row) ? "" : "no bytes";
}

std::string bytesText(const DumpRow& row)
{
    std::string text(row.kind == Kind::text ? "\"" : "");
    switch (row.kind) {
    case Kind::rest:
        return std::string(ellipsis) + "any";
    case Kind::leftOut:
        return std::string(ellipsis) + std::to_string(row.leftOut) + " bytes";
    case Kind::text:
        for (const std::optional<char>& byte : row.bytes)
            text += byte.value_or('?');
        return text + '"';
    case Kind::hexadecimal:
        break;
    }
    for (const std::optional<char>& byte : row.bytes)
        text += (text.empty() ? "" : " ") +
                (byte ? hexadecimal(static_cast<unsigned char>(*byte), 2) : "??");
    return text;
}

// As it is seen: the ellipsis is one character.
size_t widthOf(const std::string& text)
{
    return text.starts_with(ellipsis) ? text.size() - ellipsis.size() + 2 : text.size();
}

size_t widestBytes(const Dump& dump)
{
    size_t widest = 0;
    for (const DumpRow& row : dump.rows)
        widest = std::max(widest, widthOf(bytesText(row)));
    return widest;
}

int digitsOfOffsets(const Dump& dump)
{
    size_t size = 0;
    for (const DumpRow& row : dump.rows)
        size += row.size();
    return static_cast<int>(hexadecimal(size, 2).size());
}

} // namespace

ReadDump readDump(const FencedBlock& block)
{
    ReadDump read{{block.name, {}}, ""};
    size_t due = 0;
    size_t number = block.line;
    if (block.name.empty() || block.lines.empty())
        read.fault = "line " + std::to_string(number) + ": a dump without a name or without rows";
    for (const std::string& line : block.lines) {
        ++number;
        DumpRow row;
        const bool isBehindTheRest =
            !read.dump.rows.empty() && read.dump.rows.back().kind == Kind::rest;
        const std::string fault =
            isBehindTheRest ? "a row behind the rest" : readRow(line, due, row);
        if (!fault.empty()) {
            read.fault = "line " + std::to_string(number) + ": " + fault;
            break;
        }
        due += row.size();
        read.dump.rows.push_back(std::move(row));
    }
    return read;
}

std::string asBlock(const Dump& dump)
{
    const size_t width = widestBytes(dump);
    const int digits = digitsOfOffsets(dump);
    std::string block = "```dump " + dump.name + '\n';
    size_t offset = 0;
    for (const DumpRow& row : dump.rows) {
        const std::string bytes = bytesText(row);
        block += hexadecimal(offset, digits) + "  " + bytes;
        if (!row.annotation.empty())
            block += std::string(width - widthOf(bytes) + 2, ' ') + row.annotation;
        block += '\n';
        offset += row.size();
    }
    return block + "```\n";
}

} // namespace documents
