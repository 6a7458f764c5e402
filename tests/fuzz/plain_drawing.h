// A tool's outline once more, as one plain run through its steps.
#pragma once

#include "toolpicture/dimensions.h"

#include <vector>

namespace fuzzing {

struct PlainDrawing {
    // Each move: 0 moves and 1 draws to a point; 2 draws, and 3 draws apart, an arc in a box (left,
    // top, right, bottom) from a point to a point.
    std::vector<std::vector<int>> moves;
    std::vector<int> marks; // cap, shank, shoulder
};

PlainDrawing plainDrawing(const torvapdm::ToolArguments& arguments);

// The bytes of the work surface: twice as wide and as high as the picture, four bytes a pixel.
double plainBytes(const torvapdm::ToolArguments& arguments);

} // namespace fuzzing
