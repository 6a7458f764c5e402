// The documentation pages, next to the test programs, and the parts of them that tests read: their
// tables, and the fenced blocks with a word and a name after the fence, some of them byte dumps.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace documents {

// The Companion's installation folder in the pages.
inline constexpr wchar_t installationOfThePages[] = L"C:\\ZEM";

// The text of a page such as "exchanges.md"; empty if there is no such page.
std::string pageText(const std::string& name);

// One cell per column, as in the page except that escaped bars are unescaped.
using TableRow = std::vector<std::string>;

// The rows of the first table below this heading, without its header.
std::vector<TableRow> tableBelow(const std::string& page, std::string_view heading);

// The first text in backticks; empty if there is none.
std::string codeIn(std::string_view text);

// True if the text matches the pattern, in which each `<…>` matches any text.
bool isLike(std::string_view text, std::string_view pattern);

// ```dump open-request
struct FencedBlock {
    std::string word;
    std::string name;
    size_t line = 0; // line of the opening fence, counted from 1
    std::vector<std::string> lines{};
    std::string page{}; // of blocksOfPages

    bool operator==(const FencedBlock&) const = default;
};

// The blocks with this word, in order. A block without a closing fence extends to the page's end.
std::vector<FencedBlock> fencedBlocks(const std::string& page, std::string_view word);
// The blocks with this word in all pages.
std::vector<FencedBlock> blocksOfPages(std::string_view word);

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
struct Dump {
    std::vector<std::optional<char>> bytes{}; // nothing for an arbitrary byte
    bool leavesOut = false;
    bool isOpenEnded = false; // the remaining bytes are not shown
    std::string fault{};      // an error in the block: "line 12: no bytes"
};

Dump parseDump(const FencedBlock& block);
// The valid dumps of all pages, by name.
std::map<std::string, Dump> dumpsOfPages();

// The first position where the bytes differ from the dump, including missing or extra bytes:
// "offset 1E: 0D, shown is 0A". Empty if they match.
std::string difference(std::string_view bytes, const Dump& dump);

// The bytes of the dump, 0 for an arbitrary byte; nothing if the dump leaves any out.
std::optional<std::string> bytesOf(const Dump& dump);

// A dump of the bytes without annotations.
std::string asBlock(const std::string& name, std::string_view bytes);

} // namespace documents
