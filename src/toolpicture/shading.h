// How the picture within and around the outline is coloured. No platform header: these are
// decisions.
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

// Whether the pixel of this column and row bears the outline's colour; false outside the surface.
using IsOutline = std::function<bool(int x, int y)>;

// For each row of the picture, the first column that is not background.
using BoundaryTable = std::array<int, mostRows>;

// Rows top to bottom - 1, which belong to one section of the tool and begin in the same column.
struct BodyRun {
    int boundary;
    int top;
    int bottom;
};

// The run that begins in row `top`, within the picture. Nothing when the left half of the row,
// without the centre column, has no outline: the tool has ended.
std::optional<BodyRun> findBodyRun(const IsOutline& isOutline, int top, PictureSize picture,
                                   const SectionMarks& marks);

// The end (the row below its last) of a run from `top` to `bottom` - 1, cut below the first mark in
// it.
int cutAtMark(int top, int bottom, const SectionMarks& marks);

// The unshaded colour of a run that begins in row `top`.
Colour sectionColour(int top, const SectionMarks& marks);

// The body's colour `t` columns from its left edge (0) on the way to its centre (`span`, at least
// 1), where it is lightest.
Colour bodyColour(Colour section, int t, int span);

// The row below the last of those that share row `top`'s boundary.
int endOfEqualRows(const BoundaryTable& sp, int top, int height);

} // namespace torvapdm
