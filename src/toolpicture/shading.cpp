#include "toolpicture/shading.h"

#include "toolpicture/numbers.h"

#include <cmath>

namespace torvapdm {

int cutAtMark(int top, int bottom, const SectionMarks& marks)
{
    for (const int mark : {marks.cap, marks.shank, marks.shoulder})
        if (top <= mark && mark < bottom)
            return mark + 1;
    return bottom;
}

std::optional<BodyRun> findBodyRun(const IsOutline& isOutline, int top, PictureSize picture,
                                   const SectionMarks& marks)
{
    const int centre = picture.width / 2;
    int x = 0;
    while (x < centre && !isOutline(x, top))
        ++x;
    if (x == centre)
        return std::nullopt;
    int bottom = top + 1;
    while (bottom < picture.height && isOutline(x, bottom) && !isOutline(x - 1, bottom))
        ++bottom;
    return BodyRun{x, top, cutAtMark(top, bottom, marks)};
}

Colour sectionColour(int top, const SectionMarks& marks)
{
    if (top <= marks.cap)
        return capColour;
    if (top < marks.shank)
        return shankColour;
    return top < marks.shoulder ? shoulderColour : fluteColour;
}

Colour bodyColour(Colour section, int t, int span)
{
    constexpr double strongestLight = 60; // percent
    const double light = std::sin(radians(t * 90.0 / span)) * strongestLight;
    return adjustHls(section, truncated(light), truncated(-(light / 40)));
}

int endOfEqualRows(const BoundaryTable& boundaries, int top, int height)
{
    const int boundary = boundaries[static_cast<size_t>(top)];
    int bottom = top + 1;
    while (bottom < height && boundaries[static_cast<size_t>(bottom)] == boundary)
        ++bottom;
    return bottom;
}

} // namespace torvapdm
