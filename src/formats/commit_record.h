// The three forms in which a commit is told to the Companion. No platform header: these are
// decisions.
#pragma once

#include <cstdint>
#include <string>

namespace torvapdm {

// The record for the Companion's commit request file, 8 + 2n bytes: the ZEM id and the name's
// length n in UTF-16 units, both unsigned 32-bit little-endian, then the name in UTF-16LE without a
// zero. commitRecord(42, L"a") is the bytes 2A 00 00 00 01 00 00 00 61 00.
std::string commitRecord(std::uint32_t zemId, const std::wstring& file);

// The notice that announces a record: commitNotice(42, "C:\\a.mcam") is "ZEMID=42|C:\a.mcam".
std::string commitNotice(std::uint32_t zemId, const std::string& file);

// The arguments that start the Companion with a commit: `--commit "FILE"`, and behind it
// ` --id 4294967295` when no ZEM id is known.
std::wstring commitArguments(std::uint32_t zemId, const std::wstring& file);

} // namespace torvapdm
