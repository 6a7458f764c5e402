#include "toolpicture/geometry.h"

#include "toolpicture/numbers.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace torvapdm {

namespace {

constexpr std::uint64_t bytesPerPixel = 4;
constexpr std::uint64_t largestBitmap = std::numeric_limits<std::int32_t>::max();

// The length that determines the cap's width, since the cap has no dimension of its own.
double capLength(const ToolDimensions& tool, double scale, int width)
{
    double length = std::max(tool.totalLength / 2, 2.0);
    if (length > 10 && length < 30)
        length = 30; // Quirk Q27: and exactly 10 stays 10.
    // Quirk Q28: the bound is in pixels, although the length is in the tool's unit.
    if (length / scale * 1.2 > width)
        length = width / 1.2;
    return length;
}

int capHalfOf(const ToolDimensions& tool, double scale, PictureSize picture)
{
    const double length = capLength(tool, scale, picture.width);
    return clampInt(truncated(length / (2 * scale)), 2, picture.width / 2 - 5);
}

} // namespace

bool isPictureSize(std::uint32_t width, std::uint32_t height)
{
    if (width == 0 || height == 0 || height > mostRows)
        return false;
    return std::uint64_t{width} * 2 * height * 2 * bytesPerPixel <= largestBitmap;
}

double toolScale(const ToolDimensions& tool, PictureSize picture)
{
    const int shorterSide = clampInt(std::min(picture.width, picture.height), 1, 1000);
    double scale = std::max(tool.drawnWidth, tool.totalLength) / shorterSide;
    if (scale <= 0)
        scale = 1;
    scale *= picture.width > picture.height ? 1.09 : 1.08;
    const double widestHalf = tool.diameter * 0.5 + tool.taper;
    // Quirk Q26: a thinner tool is enlarged to one pixel on each side and may exceed the picture.
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
