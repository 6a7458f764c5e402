#include "toolpicture/picture.h"

#include "companion/installation.h"
#include "toolpicture/surface.h"
#include "toolpicture/shading.h"

#include <algorithm>
#include <utility>

namespace torvapdm {

namespace {

// Quirk Q31: not a colour. The body and the graded background paint over every pixel it fills.
constexpr COLORREF backgroundValue = 0xFFFFFFFF;

// Fills the rows `top` to `bottom` - 1 of a column.
void fillColumn(HDC context, int x, int top, int bottom, Colour colour)
{
    const RECT column = {x, top, x + 1, bottom};
    fillSolidRect(context, column, colour);
}

void draw(HDC context, const OutlineMove& move)
{
    const auto& [kind, to, topLeft, bottomRight, start, end] = move;
    switch (kind) {
    case OutlineMove::Kind::moveTo:
        MoveToEx(context, to.x, to.y, nullptr);
        break;
    case OutlineMove::Kind::lineTo:
        LineTo(context, to.x, to.y);
        break;
    case OutlineMove::Kind::arcTo:
        ArcTo(context, topLeft.x, topLeft.y, bottomRight.x, bottomRight.y, start.x, start.y, end.x,
              end.y);
        break;
    case OutlineMove::Kind::arc:
        Arc(context, topLeft.x, topLeft.y, bottomRight.x, bottomRight.y, start.x, start.y, end.x,
            end.y);
        break;
    }
}

// False when the pen cannot be created.
bool drawOutline(HDC context, const ToolOutline& outline)
{
    const Pen pen(CreatePen(PS_SOLID, 1, outlineColour));
    if (!pen)
        return false;
    const HGDIOBJ former = SelectObject(context, pen.get());
    for (const OutlineMove& move : outline.moves)
        draw(context, move);
    GdiFlush();
    SelectObject(context, former);
    return true;
}

void shadeRun(HDC context, const BodyRun& run, PictureSize picture, Colour section)
{
    const int span = picture.width / 2 - run.boundary;
    for (int t = 0; t <= span; ++t)
        fillColumn(context, run.boundary + t, run.top, run.bottom, bodyColour(section, t, span));
}

// Shades the body, and stores in `boundaries` the column in which it starts in each row.
void shadeBody(HDC context, PictureSize picture, const SectionMarks& marks,
               BoundaryTable& boundaries)
{
    const auto isOutline = [context](int x, int y) {
        return GetPixel(context, x, y) == outlineColour;
    };
    boundaries.fill(picture.width / 2 + 1);
    for (int y = 0; y < picture.height;) {
        const auto run = findBodyRun(isOutline, y, picture, marks);
        if (!run)
            return;
        std::fill(boundaries.begin() + run->top, boundaries.begin() + run->bottom, run->boundary);
        shadeRun(context, *run, picture, sectionColour(y, marks));
        y = run->bottom;
    }
}

void paintBackground(HDC context, PictureSize picture, const BoundaryTable& boundaries)
{
    for (int y = 0; y < picture.height;) {
        const int bottom = endOfEqualRows(boundaries, y, picture.height);
        for (int x = 0; x < boundaries[static_cast<size_t>(y)]; ++x)
            fillColumn(context, x, y, bottom,
                       adjustHls(backgroundBase, MulDiv(x, 80, picture.width),
                                 MulDiv(x, -50, picture.width)));
        y = bottom;
    }
}

// Quirk Q32: the centre column appears twice, and the row below the picture, which is cut off
// later, is copied as well.
void mirrorLeftHalf(HDC context, PictureSize picture)
{
    const int centre = picture.width / 2;
    for (int distance = 1, source = centre; source >= 1; ++distance, --source)
        for (int y = 0; y <= picture.height; ++y)
            fillColumn(context, centre + distance, y, y + 1, GetPixel(context, source, y));
}

// Draws the whole picture into the upper left quarter of the work surface; false when it cannot.
bool drawPicture(HDC context, const ToolOutline& outline, PictureSize picture)
{
    const RECT area = {0, 0, picture.width, picture.height};
    fillSolidRect(context, area, backgroundValue);
    if (!drawOutline(context, outline))
        return false;
    BoundaryTable boundaries{};
    shadeBody(context, picture, outline.marks, boundaries);
    paintBackground(context, picture, boundaries);
    mirrorLeftHalf(context, picture);
    return true;
}

// The picture as a bitmap; null when it cannot be drawn. The work surface is twice as wide and
// high, since the outline and its mirror image can extend to the right of the picture and below it.
Bitmap toolBitmap(const ToolOutline& outline, PictureSize picture)
{
    const auto [width, height] = picture;
    const ScreenContext screen = openScreenContext();
    const PictureSurface work = openSurface(screen, 2 * width, 2 * height);
    PictureSurface result = openSurface(screen, width, height);
    const HDC workContext = work.context.get();
    const HDC resultContext = result.context.get();
    if (!workContext || !resultContext || !drawPicture(workContext, outline, picture))
        return nullptr;
    if (!BitBlt(resultContext, 0, 0, width, height, workContext, 0, 0, SRCCOPY))
        return nullptr;
    return takeBitmap(std::move(result));
}

} // namespace

void drawTool(const ToolArguments& arguments, std::int32_t imageId)
{
    if (!isPictureSize(arguments.width, arguments.height))
        return;
    const PictureSize picture = {static_cast<int>(arguments.width),
                                 static_cast<int>(arguments.height)};
    const ToolDimensions tool = toolDimensions(guardedArguments(arguments));
    if (!isDrawable(tool, toolScale(tool, picture)))
        return;
    const ToolOutline outline = toolOutline(tool, toolGeometry(tool, picture));
    if (!canBeDrawn(outline))
        return;
    Bitmap bitmap = toolBitmap(outline, picture);
    if (!bitmap)
        return;
    CImage image;
    image.Attach(bitmap.release());
    image.Save(toolPicturePath(imageId).c_str());
}

} // namespace torvapdm
