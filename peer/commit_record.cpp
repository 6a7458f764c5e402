#include "peer/commit_record.h"

#include <algorithm>

namespace peer {
namespace {

constexpr size_t headSize = 8;
constexpr size_t certainUnits = (certainRecordStart - headSize) / 2; // `C:\`, or `\\` and a letter

unsigned byteAt(std::string_view bytes, size_t place)
{
    return static_cast<unsigned char>(bytes[place]);
}

std::uint32_t numberAt(std::string_view bytes, size_t place)
{
    return byteAt(bytes, place) | byteAt(bytes, place + 1) << 8 | byteAt(bytes, place + 2) << 16 |
           byteAt(bytes, place + 3) << 24;
}

void append(std::string& bytes, std::uint32_t number, int size)
{
    for (int i = 0; i < size; ++i)
        bytes += static_cast<char>(number >> 8 * i & 0xFF);
}

bool isControl(wchar_t c)
{
    return c < L' ';
}

// The name as far as the bytes go, up to the first control character. Reading on would make garbage
// slow: it would be read again from each of its offsets.
std::wstring nameIn(std::string_view bytes, size_t units)
{
    std::wstring name;
    for (size_t i = headSize; name.size() < units && i + 1 < bytes.size(); i += 2) {
        name += static_cast<wchar_t>(byteAt(bytes, i) | byteAt(bytes, i + 1) << 8);
        if (isControl(name.back()))
            break;
    }
    return name;
}

bool isLetter(wchar_t c)
{
    return (c >= L'A' && c <= L'Z') || (c >= L'a' && c <= L'z');
}

Piece recordOrStart(std::string_view bytes)
{
    Piece foreign{PieceKind::foreign, 0};
    if (bytes.size() < headSize)
        return {PieceKind::incomplete, bytes.size()};
    const std::uint32_t id = numberAt(bytes, 0);
    const std::uint32_t units = numberAt(bytes, 4);
    const bool isHole = id == 0 && units == 0; // bytes that were never written
    if (isHole || units > longestCommitName)
        return foreign;
    std::wstring name = nameIn(bytes, units);
    if (!name.empty() && isControl(name.back()))
        return foreign;
    if (name.size() < units)
        return {PieceKind::incomplete, bytes.size()};
    return {PieceKind::record, headSize + 2 * name.size(), {id, std::move(name)}};
}

// A record among foreign bytes has to meet more conditions than one in its own place.
bool isCertainRecord(std::string_view bytes)
{
    return bytes.size() >= certainRecordStart && numberAt(bytes, 4) >= certainUnits &&
           isFullPath(nameIn(bytes, certainUnits)) &&
           recordOrStart(bytes).kind != PieceKind::foreign;
}

// The offset of the first certain record after the start of the bytes; `before` when there is none.
size_t nextCertainRecord(std::string_view bytes, size_t before)
{
    size_t place = 1;
    while (place < before && !isCertainRecord(bytes.substr(place)))
        ++place;
    return place;
}

} // namespace

Piece parsePiece(std::string_view bytes)
{
    const Piece piece = recordOrStart(bytes);
    const bool isForeign = piece.kind == PieceKind::foreign;
    const size_t end = isForeign ? bytes.size() : piece.size;
    const size_t next = nextCertainRecord(bytes, end);
    // A record that begins inside this one means that the rest of this one was never written.
    return isForeign || next < end ? Piece{PieceKind::foreign, next} : piece;
}

std::string formatCommitRecord(const CommitRecord& record)
{
    std::string bytes;
    append(bytes, record.id, 4);
    append(bytes, static_cast<std::uint32_t>(record.file.size()), 4);
    for (const wchar_t unit : record.file)
        append(bytes, static_cast<std::uint32_t>(unit), 2);
    return bytes;
}

bool isFullPath(std::wstring_view path)
{
    const bool hasDrive = path.size() >= 3 && isLetter(path[0]) && path[1] == L':' &&
                          (path[2] == L'\\' || path[2] == L'/');
    return hasDrive || (path.size() >= 3 && path[0] == L'\\' && path[1] == L'\\');
}

} // namespace peer
