// The outline of a tool's left half, as a list of drawing moves. No platform header.
#pragma once

#include "toolpicture/geometry.h"

#include <vector>

namespace torvapdm {

struct PixelPoint {
    int x;
    int y;
};

// One graphics call. A line excludes its last pixel. An arc is the part of the ellipse in the box
// that runs counter-clockwise from the direction of `start` to that of `end`, seen from the centre
// of the box; arcTo first draws a line to the arc and moves the current position to its end, arc
// does not use the current position.
struct OutlineMove {
    enum class Kind { moveTo, lineTo, arcTo, arc };

    Kind kind;
    PixelPoint to;         // of moveTo and lineTo
    PixelPoint boxTopLeft; // of an arc
    PixelPoint boxBottomRight;
    PixelPoint start;
    PixelPoint end;
};

// The rows in which the cap, the shank and the shoulder end, in ascending order. The flutes and the
// tip follow.
struct SectionMarks {
    int cap;
    int shank;
    int shoulder;
};

struct ToolOutline {
    std::vector<OutlineMove> moves;
    SectionMarks marks;
};

// From the cap, along shank, shoulder and flutes, to the middle of the tip.
ToolOutline toolOutline(const ToolDimensions& tool, const ToolGeometry& geometry);

// True when the graphics calls can draw every move: each point is nearer than the farthest pixel,
// and each arc's box is within 32,767 pixels of the picture's origin.
bool canBeDrawn(const ToolOutline& outline);

} // namespace torvapdm
