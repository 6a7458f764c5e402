// An annotated dump of bytes, as the pages have it.
//
//   ```dump open-request
//   00  EF BB BF                                mark
//   03  31 37                                   request id, decimal
//   05  20                                      space
//   06  "C:\ZEM\work\bracket.mcam"              path
//   1E  0A                                      line feed
//   ```
//
// A line is an offset, bytes, and what they are, with two spaces or more in between. The bytes are
// hexadecimal, `??` for one that differs from run to run; or text in double quotes, a byte a
// character; or left out: `… 60 bytes`, or `… any` up to the end, however many.
#pragma once

#include "documents/page_text.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace documents {

struct Dump {
    std::vector<std::optional<char>> bytes{}; // nothing for any byte
    bool leavesOut = false;
    bool isOpenEnded = false; // leaves out the rest
    std::string fault{};      // what is wrong with the block: "line 12: no bytes"
};

Dump parseDump(const FencedBlock& block);

// Where the bytes are not what the dump shows, no more and no less: "offset 1E: 0D, shown is 0A";
// empty when they are.
std::string difference(std::string_view bytes, const Dump& dump);

// The bytes that it shows, a `0` for any; nothing when it leaves some out.
std::optional<std::string> bytesOf(const Dump& dump);

// A block that shows the bytes, without annotations.
std::string asBlock(const std::string& name, std::string_view bytes);

} // namespace documents
