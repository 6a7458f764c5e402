#include "documents/dump.h"

#include <algorithm>

namespace documents {

namespace {

using Kind = DumpRow::Kind;
using Rows = std::vector<DumpRow>;

constexpr size_t bytesInARow = 16;
constexpr size_t charactersInARow = 64;
constexpr size_t leastText = 4; // fewer characters may be a number by chance

bool isQuotable(char byte)
{
    return byte >= ' ' && byte <= '~' && byte != '"';
}

// How many of the bytes are text from the first one on.
size_t leadingText(std::string_view bytes)
{
    return static_cast<size_t>(std::ranges::find_if_not(bytes, isQuotable) - bytes.begin());
}

// True when the row can stand for the bytes there.
bool fits(const DumpRow& row, std::string_view bytes)
{
    if (row.size() > bytes.size())
        return false;
    const std::string_view own = bytes.substr(0, row.bytes.size());
    return std::ranges::equal(own, row.bytes, [](char byte, const std::optional<char>& shown) {
        return !shown || *shown == byte;
    });
}

bool isConcrete(const DumpRow& row)
{
    return std::ranges::any_of(
        row.bytes, [](const std::optional<char>& byte) { return byte.has_value(); });
}

// True when the row can stay as it is. Bytes that are left out say nothing themselves.
bool isInPlace(const Rows& rows, size_t place, std::string_view bytes)
{
    const DumpRow& row = rows[place];
    return fits(row, bytes) && (row.kind != Kind::leftOut || place + 1 == rows.size() ||
                                fits(rows[place + 1], bytes.substr(row.size())));
}

// How many of the bytes a row stands for that no longer fits: up to where the next one does.
size_t changedSize(const Rows& rows, size_t place, std::string_view bytes)
{
    if (place + 1 == rows.size())
        return bytes.size();
    const DumpRow& next = rows[place + 1];
    for (size_t at = 0; isConcrete(next) && at < bytes.size(); ++at)
        if (fits(next, bytes.substr(at)))
            return at;
    return std::min(rows[place].size(), bytes.size());
}

DumpRow rowOf(std::string_view bytes, Kind kind, const std::string& annotation)
{
    DumpRow row{.kind = kind, .annotation = annotation};
    row.bytes.assign(bytes.begin(), bytes.end());
    return row;
}

// How many of the bytes the next row takes that nobody has laid out yet.
size_t newSize(std::string_view bytes)
{
    if (leadingText(bytes) >= leastText)
        return std::min(leadingText(bytes), charactersInARow);
    size_t size = 1;
    while (size < std::min(bytes.size(), bytesInARow) &&
           leadingText(bytes.substr(size)) < leastText)
        ++size;
    return size;
}

void appendNew(Rows& rows, std::string_view bytes, std::string annotation)
{
    while (!bytes.empty()) {
        const size_t size = newSize(bytes);
        const Kind kind = leadingText(bytes) >= leastText ? Kind::text : Kind::hexadecimal;
        rows.push_back(rowOf(bytes.substr(0, size), kind, annotation));
        annotation.clear();
        bytes.remove_prefix(size);
    }
}

// These bytes in the row's place: in its form where they can have it, any byte where it has one.
void appendChanged(Rows& rows, const DumpRow& row, std::string_view bytes)
{
    if (row.kind == Kind::leftOut && !bytes.empty()) {
        rows.push_back(row);
        rows.back().leftOut = bytes.size();
    } else if (row.kind == Kind::text && !bytes.empty() && std::ranges::all_of(bytes, isQuotable)) {
        rows.push_back(rowOf(bytes, Kind::text, row.annotation));
    } else if (row.kind == Kind::hexadecimal && bytes.size() == row.size()) {
        rows.push_back(rowOf(bytes, row.kind, row.annotation));
        for (size_t i = 0; i < row.bytes.size(); ++i)
            if (!row.bytes[i])
                rows.back().bytes[i].reset();
    } else {
        appendNew(rows, bytes, row.annotation);
    }
}

} // namespace

Dump showing(std::string_view bytes, const Dump& dump)
{
    Dump shown{dump.name, {}};
    for (size_t i = 0; i < dump.rows.size(); ++i) {
        const DumpRow& row = dump.rows[i];
        const bool isRest = row.kind == Kind::rest;
        const size_t size = isRest                           ? bytes.size()
                            : isInPlace(dump.rows, i, bytes) ? row.size()
                                                             : changedSize(dump.rows, i, bytes);
        if (isRest)
            shown.rows.push_back(row);
        else
            appendChanged(shown.rows, row, bytes.substr(0, size));
        bytes.remove_prefix(size);
    }
    appendNew(shown.rows, bytes, "");
    return shown;
}

bool isShown(std::string_view bytes, const Dump& dump)
{
    return showing(bytes, dump) == dump;
}

std::optional<std::string> bytesOf(const Dump& dump)
{
    std::string bytes;
    for (const DumpRow& row : dump.rows) {
        if (row.kind == Kind::leftOut || row.kind == Kind::rest)
            return std::nullopt;
        for (const std::optional<char>& byte : row.bytes)
            bytes += byte.value_or('0');
    }
    return bytes;
}

} // namespace documents
