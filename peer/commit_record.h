// The records of a commit request file, `temp\torvapdm-<process id of the Companion>.dat`. Hosts
// append them one behind the other, little-endian, with nothing between and nothing at the end:
//
//   4 bytes   id: the host's ZEM id; 4294967295 for none
//   4 bytes   n: the length of the file's name in UTF-16 units
//   2n bytes  the file's name, without a NUL
//
//   2A 00 00 00  09 00 00 00  43 00 3A 00 5C 00 61 00 2E 00 6D 00 63 00 61 00 6D 00
//   id 42, 9 units, C:\a.mcam
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace companion {

struct CommitRecord {
    std::uint32_t id = 0;
    std::wstring file{};
};

// A name has at most as many units as the system's longest path.
constexpr std::uint32_t longestCommitName = 32767;
constexpr size_t longestCommitRecord = 8 + 2 * size_t{longestCommitName};

// So many bytes have to be there for a record to be known among foreign bytes: its numbers and the
// first three units of a full path.
constexpr size_t surestStart = 14;

enum class PieceKind {
    incomplete, // the start of a record; the rest is still to come
    record,
    foreign // no record, up to the next one or to the end
};

struct Piece {
    PieceKind kind = PieceKind::incomplete;
    size_t size = 0;       // bytes; of an incomplete one, those that are there
    CommitRecord record{}; // of a record
};

// Takes the next piece off the front of bytes that start where a record should.
//
// What cannot become a record, whatever follows, is foreign: a length above the longest, a control
// character in the part of the name that is there, eight zeros, and a record inside which another
// one starts that names a full path. So what was appended behind half a record or behind garbage
// shows what stands in front of it as foreign. Foreign bytes end where such a record starts, or at
// the end.
Piece nextPiece(std::string_view bytes);

std::string commitRecordBytes(const CommitRecord& record);

// True when the text starts as a full path does: with a drive or with two backslashes.
bool isFullPath(std::wstring_view path);

} // namespace companion
