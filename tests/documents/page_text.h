// The parts of a page that tests read: its tables, and the fenced blocks with a word and a name
// after the fence.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace documents {

// ```dump open-request
struct FencedBlock {
    std::string word;
    std::string name;
    size_t line = 0; // line of the opening fence, counted from 1
    std::vector<std::string> lines;

    bool operator==(const FencedBlock&) const = default;
};

// The blocks with this word, in order. A block without a closing fence extends to the page's end.
std::vector<FencedBlock> fencedBlocks(std::string_view page, std::string_view word);

// The lines, each followed by a line feed.
std::string joined(const std::vector<std::string>& lines);

// One cell per column, as in the page except that escaped bars are unescaped.
using TableRow = std::vector<std::string>;

// The rows of the first table below this heading, without its header.
std::vector<TableRow> tableBelow(std::string_view page, std::string_view heading);

// The first text in backticks; empty if there is none.
std::string codeIn(std::string_view text);

// True if the text matches the pattern, in which each `<…>` matches any text.
bool isLike(std::string_view text, std::string_view pattern);

} // namespace documents
