// The records of a commit file, `temp\torvapdm-<process id of the Companion>.dat`. Hosts append
// them, little-endian, without padding:
//
//   4 bytes   the host's ZEM id; 4294967295 for none
//   4 bytes   n, the length of the file name in UTF-16 units
//   2n bytes  the file name, without a null terminator
//
//   2A 00 00 00  09 00 00 00  43 00 3A 00 5C 00 61 00 2E 00 6D 00 63 00 61 00 6D 00
//   id 42, 9 units, C:\a.mcam
#pragma once

#include "peer/wire_constants.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace peer {

struct CommitRecord {
    std::uint32_t id = 0;
    std::wstring file{};
};

constexpr size_t longestCommitRecord = 8 + 2 * size_t{longestCommitName};

// Bytes needed to recognise a record among foreign bytes: its two numbers and the first three units
// of a full path.
constexpr size_t certainRecordStart = 14;

enum class PieceKind {
    incomplete, // the start of a record; the rest is missing
    record,
    foreign // not a record; up to the next one or to the end
};

struct Piece {
    PieceKind kind = PieceKind::incomplete;
    size_t size = 0;       // bytes; of an incomplete one, those present
    CommitRecord record{}; // if it is a record
};

// The first piece of the bytes, which start where a record should.
//
// Bytes that cannot become a record, whatever follows, are foreign: a length above the longest, a
// control character in the name, eight zero bytes, and a record inside which another one starts
// that names a full path. So a record appended after half a record or after garbage shows that the
// bytes before it are foreign. Foreign bytes end where such a record starts, or at the end.
Piece parsePiece(std::string_view bytes);

std::string formatCommitRecord(const CommitRecord& record);

// True when the path starts with a drive or with two backslashes.
bool isFullPath(std::wstring_view path);

} // namespace peer
