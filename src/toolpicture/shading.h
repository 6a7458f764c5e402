// The colours inside and around the outline. No platform header.
#pragma once

#include "toolpicture/colours.h"
#include "toolpicture/outline.h"

#include <array>
#include <functional>
#include <optional>

namespace torvapdm {

constexpr Colour outlineColour = 0xFF00FF;
constexpr Colour capColour = 0x080808;
constexpr Colour shankColour = 0x008080;
constexpr Colour shoulderColour = 0x108010;
constexpr Colour fluteColour = 0x801010;
constexpr Colour backgroundBase = 0xD8930E;

// Whether the pixel in this column and row has the outline's colour; false outside the surface.
using IsOutline = std::function<bool(int x, int y)>;

// For each row of the picture, the first column that is not background.
using BoundaryTable = std::array<int, mostRows>;

// Rows `top` to `bottom` - 1, which belong to one section of the tool and start in one column.
struct BodyRun {
    int boundary;
    int top;
    int bottom;
};

// The run that starts in row `top`. Nothing when the row has no outline to the left of the centre
// column: the tool has ended.
std::optional<BodyRun> findBodyRun(const IsOutline& isOutline, int top, PictureSize picture,
                                   const SectionMarks& marks);

// The end (exclusive) of the run from `top` to `bottom` - 1 when it is cut after the first mark in
// it.
int cutAtMark(int top, int bottom, const SectionMarks& marks);

// The unshaded colour of a run that starts in row `top`.
Colour sectionColour(int top, const SectionMarks& marks);

// The body's colour, `t` columns from its left edge towards its centre, which is `span` columns
// away (at least 1) and lightest.
Colour bodyColour(Colour section, int t, int span);

// The row after the last one that has the same boundary as row `top`.
int endOfEqualRows(const BoundaryTable& boundaries, int top, int height);

} // namespace torvapdm
