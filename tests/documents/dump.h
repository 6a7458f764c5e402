// An annotated dump of bytes, as the pages have it.
//
//   ```dump open-request
//   00  EF BB BF                                mark
//   03  31 37                                   request id, decimal
//   05  20                                      blank
//   06  "C:\ZEM\work\bracket.mcam"              path
//   1E  0A                                      line feed
//   ```
//
// A line is an offset, bytes, and what they are, with two blanks or more in between. The bytes are
// hexadecimal, `??` for one that differs from run to run; or text in double quotes, a byte a
// character; or left out: `… 60 bytes`, or `… any` up to the end, however many.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace documents {

struct DumpRow {
    enum class Kind { hexadecimal, text, leftOut, rest };

    Kind kind = Kind::hexadecimal;
    std::vector<std::optional<char>> bytes{}; // nothing for any byte
    size_t leftOut = 0;
    std::string annotation{};

    size_t size() const { return kind == Kind::leftOut ? leftOut : bytes.size(); }
    bool operator==(const DumpRow&) const = default;
};

struct Dump {
    std::string name;
    std::vector<DumpRow> rows;

    bool operator==(const Dump&) const = default;
};

// The dump as it should stand to show these bytes: with its rows as far as they fit, and with their
// annotations. Bytes that no row shows come last, in rows of text and of others.
Dump showing(std::string_view bytes, const Dump& dump);

// True when the bytes are what the dump shows, no more and no less.
bool isShown(std::string_view bytes, const Dump& dump);

// The bytes that it shows, a `0` for any; nothing when it leaves some out.
std::optional<std::string> bytesOf(const Dump& dump);

} // namespace documents
