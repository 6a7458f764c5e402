// The fenced blocks of a page that a test reads: those with a word and a name behind the fence.
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

// The lines, each with a line feed behind it.
std::string joined(const std::vector<std::string>& lines);

} // namespace documents
