// The commit record, one entry in the commit file. No platform header.
//
//   offset 0   4 bytes   ZEM id, unsigned
//          4   4         n, the file name's length in UTF-16 units, unsigned
//          8   2n        the file name in UTF-16LE, without a null terminator
//
// Numbers are little-endian; the record has no padding.
#pragma once

#include <cstdint>
#include <string>

namespace torvapdm {

// formatCommitRecord(42, L"a") is the bytes 2A 00 00 00 01 00 00 00 61 00.
std::string formatCommitRecord(std::uint32_t zemId, const std::wstring& file);

} // namespace torvapdm
