#include "toolpicture/picture.h"

#include "companion/installation.h"
#include "toolpicture/surface.h"
#include "toolpicture/shading.h"

#include <algorithm>
#include <utility>

namespace torvapdm {

namespace {

// Deliberate: a value that is no colour. One would expect the background's own; it stands for a
// graded background, and the body or that background paints over every pixel that it fills.
constexpr COLORREF backgroundValue = 0xFFFFFFFF;

// A column's part from row `top` to row `bottom` - 1.
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

// False when there is no pen to draw with.
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

// Shades the body and notes in `sp` where each row's begins.
void shadeBody(HDC context, PictureSize picture, const SectionMarks& marks, BoundaryTable& sp)
{
    const auto isOutline = [context](int x, int y) {
        return GetPixel(context, x, y) == outlineColour;
    };
    sp.fill(picture.width / 2 + 1);
    for (int y = 0; y < picture.height;) {
        const auto run = findBodyRun(isOutline, y, picture, marks);
        if (!run)
            return;
        std::fill(sp.begin() + run->top, sp.begin() + run->bottom, run->boundary);
        shadeRun(context, *run, picture, sectionColour(y, marks));
        y = run->bottom;
    }
}

void paintBackground(HDC context, PictureSize picture, const BoundaryTable& sp)
{
    for (int y = 0; y < picture.height;) {
        const int bottom = endOfEqualRows(sp, y, picture.height);
        for (int x = 0; x < sp[static_cast<size_t>(y)]; ++x)
            fillColumn(context, x, y, bottom,
                       adjustHls(backgroundBase, MulDiv(x, 80, picture.width),
                                 MulDiv(x, -50, picture.width)));
        y = bottom;
    }
}

// Deliberate: the centre column comes twice, beside itself, and the row below the picture is copied
// too. One would expect the mirror image to begin with the column before the centre and to end with
// the last row. The Companion has always shown its tools so; the row is one of the work surface's
// and is cut off with the rest of it.
void mirrorLeftHalf(HDC context, PictureSize picture)
{
    const int centre = picture.width / 2;
    for (int k = 1, s = centre; s >= 1; ++k, --s)
        for (int y = 0; y <= picture.height; ++y)
            fillColumn(context, centre + k, y, y + 1, GetPixel(context, s, y));
}

// Draws the whole picture into the upper left quarter of the work surface; false when it cannot.
bool drawPicture(HDC context, const ToolOutline& outline, PictureSize picture)
{
    const RECT cr = {0, 0, picture.width, picture.height};
    fillSolidRect(context, cr, backgroundValue);
    if (!drawOutline(context, outline))
        return false;
    BoundaryTable sp{};
    shadeBody(context, picture, outline.marks, sp);
    paintBackground(context, picture, sp);
    mirrorLeftHalf(context, picture);
    return true;
}

// The tool's picture as a bitmap of its own; null when it cannot be drawn. The work surface is
// twice as wide and as high, so that what the outline and its mirror image draw beside and below
// the picture has room.
Bitmap toolBitmap(const ToolOutline& outline, PictureSize picture)
{
    const auto [width, height] = picture;
    const ScreenContext dc2 = openScreenContext();
    const PictureSurface work = openSurface(dc2, 2 * width, 2 * height);
    PictureSurface cut = openSurface(dc2, width, height);
    const HDC ddc = work.context.get();
    const HDC MemDC = cut.context.get();
    if (!ddc || !MemDC || !drawPicture(ddc, outline, picture))
        return nullptr;
    if (!BitBlt(MemDC, 0, 0, width, height, ddc, 0, 0, SRCCOPY))
        return nullptr;
    return takeBitmap(std::move(cut));
}

} // namespace

std::wstring toolPicturePath(std::int32_t imageId)
{
    return getInstallationFolder() + L"\\temp\\toolimage-" + std::to_wstring(imageId) + L".bmp";
}

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
    Bitmap Bmp = toolBitmap(outline, picture);
    if (!Bmp)
        return;
    CImage TempImageObj;
    TempImageObj.Attach(Bmp.release());
    const std::wstring sPath = toolPicturePath(imageId);
    TempImageObj.Save(sPath.c_str());
}

} // namespace torvapdm
