#include "toolpicture/geometry.h"

#include "toolpicture/numbers.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace torvapdm {

namespace {

constexpr std::uint64_t bytesAPixel = 4;
constexpr std::uint64_t mostBytes = std::numeric_limits<std::int32_t>::max();

// Half the length that stands for the cap, which has no dimension of its own.
double capLength(const ToolDimensions& tool, double scale, int width)
{
    double v = std::max(tool.totalLength / 2, 2.0);
    // Deliberate: what lies between 10 and 30 becomes 30, and 10 itself stays 10. One would expect
    // a bound on one side; the Companion's pictures have always had their caps so.
    if (v > 10 && v < 30)
        v = 30;
    // Deliberate: a cap wider than the picture is measured in pixels here and in the tool's units
    // below. One would expect one unit; in all but the narrowest pictures the bound on the cap's
    // half decides.
    if (v / scale * 1.2 > width)
        v = width / 1.2;
    return v;
}

int capHalfOf(const ToolDimensions& tool, double scale, PictureSize picture)
{
    const double v = capLength(tool, scale, picture.width);
    return clampInt(truncated(v / (2 * scale)), 2, picture.width / 2 - 5);
}

} // namespace

bool isPictureSize(std::uint32_t width, std::uint32_t height)
{
    if (width == 0 || height == 0 || height > mostRows)
        return false;
    return std::uint64_t{width} * 2 * height * 2 * bytesAPixel <= mostBytes;
}

double toolScale(const ToolDimensions& tool, PictureSize picture)
{
    const int shorterSide = clampInt(std::min(picture.width, picture.height), 1, 1000);
    double scale = std::max(tool.drawnWidth, tool.totalLength) / shorterSide;
    if (scale <= 0)
        scale = 1;
    scale *= picture.width > picture.height ? 1.09 : 1.08;
    const double widestHalf = tool.diameter * 0.5 + tool.taper;
    // Deliberate: a needle is enlarged until it is one pixel wide to either side, whatever becomes
    // of its length. One would expect it to stay within the picture; without that pixel its flutes
    // would not be seen.
    return widestHalf / scale < 1 ? widestHalf : scale;
}

ToolGeometry toolGeometry(const ToolDimensions& tool, PictureSize picture)
{
    const double scale = toolScale(tool, picture);
    const int topMargin = picture.height / 20; // whole pixels
    ToolGeometry geometry{};
    geometry.scale = scale;
    geometry.centreColumn = picture.width / 2;
    geometry.capHalf = capHalfOf(tool, scale, picture);
    geometry.shankHalf = truncated(tool.shankDiameter / (2 * scale));
    geometry.fluteHalf = truncated((tool.diameter * 0.5 + tool.taper) / scale);
    geometry.diameterHalf = truncated(tool.diameter * 0.5 / scale);
    geometry.tipRow = truncated(tool.totalLength / scale + topMargin);
    return geometry;
}

bool isDrawable(const ToolDimensions& tool, double scale)
{
    return areFinite(tool) && std::isfinite(scale) && scale > 0;
}

} // namespace torvapdm
