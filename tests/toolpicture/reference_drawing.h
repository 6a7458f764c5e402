// The tool picture's outline and runs written out once more, for the tests and the fuzzer, as one
// plain run through their steps. No platform header.
#pragma once

#include "toolpicture/dimensions.h"

#include <functional>
#include <vector>

namespace reference {

struct Marks {
    int cap, shank, shoulder;
};

struct Drawing {
    // Each move: 0 moves and 1 draws to a point; 2 draws, and 3 draws apart, an arc in a box (left,
    // top, right, bottom) from a point to a point.
    std::vector<std::vector<int>> moves;
    Marks marks;
};

// For a tool of finite lengths.
Drawing drawingOf(const torvapdm::ToolArguments& arguments);

// The rows from `top` on in which the body begins in the same column: that column, `top` and the
// row after the last. Empty without an outline in the left half of the row.
std::vector<int> bodyRun(const std::function<bool(int x, int y)>& isOutline, int top, int width,
                         int height, const Marks& marks);

// Of a body row in this section, and of a pixel `t` of `span` columns from the body's edge.
std::uint32_t sectionColour(int y, const Marks& marks);
std::uint32_t bodyColour(std::uint32_t section, int t, int span);

} // namespace reference
