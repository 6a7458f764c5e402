// The drawing calls of a tool picture: recorded while the add-in makes them, then repeated with the
// same arguments in the same order and nothing in between.
#pragma once

#include "bench/paired.h"

#include <vector>
#include <windows.h>

namespace bench {

struct GraphicsCall {
    enum class Kind { fill, getPixel, moveTo, lineTo, arcTo, arc };
    Kind kind;
    COLORREF colour; // of a fill: its background colour is set first
    RECT area;       // of a fill and of an arc; else its upper left is the point
};

struct GraphicsCalls {
    std::vector<GraphicsCall> calls;
    std::vector<RECT> arcEnds; // start and end point of each arc, in order
};

// Records the drawing calls that this program's code makes while the work runs.
GraphicsCalls recordGraphics(const Work& work);

// Repeats the calls on the context.
void repeatGraphics(HDC context, const GraphicsCalls& recorded);

} // namespace bench
