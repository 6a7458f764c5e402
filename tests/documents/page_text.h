// The parts of a page that tests read: its fenced blocks with a word and a name after the fence,
// and its tables.
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
    size_t line = 0; // the opening fence's, from 1
    std::vector<std::string> lines;

    bool operator==(const FencedBlock&) const = default;
};

// The blocks with this word, in their order. One without a closing fence goes up to the page's end.
std::vector<FencedBlock> fencedBlocks(std::string_view page, std::string_view word);

// The lines, each followed by a line feed.
std::string joined(const std::vector<std::string>& lines);

// A cell for each column, as it is on the page except for escaped bars.
using TableRow = std::vector<std::string>;

// The rows of the first table below this heading, without its head.
std::vector<TableRow> tableBelow(std::string_view page, std::string_view heading);

// The first text between backticks; empty without one.
std::string codeIn(std::string_view text);

// True when the text is the pattern with something in the place of each `<…>`.
bool isLike(std::string_view text, std::string_view pattern);

} // namespace documents
