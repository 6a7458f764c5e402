// An annotated byte dump in a page.
//
//   ```dump open-request
//   00  EF BB BF                                mark
//   03  31 37                                   request id, decimal
//   05  20                                      space
//   06  "C:\ZEM\work\bracket.mcam"              path
//   1E  0A                                      line feed
//   ```
//
// A line consists of an offset, bytes and a description, separated by two or more spaces. The bytes
// are hexadecimal, with `??` for a byte that differs between runs; or text in double quotes, one
// byte per character; or omitted: `… 60 bytes`, or `… any` for any number of bytes up to the end.
#pragma once

#include "documents/page_text.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace documents {

struct Dump {
    std::vector<std::optional<char>> bytes{}; // nothing for an arbitrary byte
    bool leavesOut = false;
    bool isOpenEnded = false; // the remaining bytes are not shown
    std::string fault{};      // an error in the block: "line 12: no bytes"
};

Dump parseDump(const FencedBlock& block);

// The first position where the bytes differ from the dump, including missing or extra bytes:
// "offset 1E: 0D, shown is 0A". Empty if they match.
std::string difference(std::string_view bytes, const Dump& dump);

// The bytes of the dump, 0 for an arbitrary byte; nothing if the dump leaves any out.
std::optional<std::string> bytesOf(const Dump& dump);

// A dump of the bytes without annotations.
std::string asBlock(const std::string& name, std::string_view bytes);

} // namespace documents
