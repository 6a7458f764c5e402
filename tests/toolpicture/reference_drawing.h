// A second, straightforward implementation of the tool picture's outline and body runs, for the
// tests and the fuzzer. It includes no platform header.
#pragma once

#include "toolpicture/dimensions.h"

#include <functional>
#include <vector>

namespace reference {

struct Marks {
    int cap, shank, shoulder;
};

struct Drawing {
    // The first element is the kind: 0 MoveTo, 1 LineTo, 2 ArcTo, 3 Arc. The rest are coordinates:
    // the point, or the arc's bounding box (left, top, right, bottom), start and end.
    std::vector<std::vector<int>> moves;
    Marks marks;
};

// All lengths must be finite.
Drawing drawingOf(const torvapdm::ToolArguments& arguments);

// The consecutive rows from `top` in which the body starts in the same column. Returns that column,
// `top` and the row after the last, or nothing if the left half of row `top` has no outline.
std::vector<int> bodyRun(const std::function<bool(int x, int y)>& isOutline, int top, int width,
                         int height, const Marks& marks);

// The base colour of a body row, and the shaded colour `t` of `span` columns from the body's edge.
std::uint32_t sectionColour(int y, const Marks& marks);
std::uint32_t bodyColour(std::uint32_t section, int t, int span);

} // namespace reference
