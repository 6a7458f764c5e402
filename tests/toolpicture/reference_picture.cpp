#include "toolpicture/reference_picture.h"

#include "toolpicture/reference_colours.h"
#include "toolpicture/reference_drawing.h"

#include <cmath>
#include <cstring>
#include <windows.h>

using testing_support::Raster;

namespace reference {

namespace {

constexpr std::uint32_t magenta = 0xFF00FF;

void draw(HDC dc, const std::vector<std::vector<int>>& moves)
{
    for (const std::vector<int>& m : moves)
        switch (m[0]) {
        case 0:
            MoveToEx(dc, m[1], m[2], nullptr);
            break;
        case 1:
            LineTo(dc, m[1], m[2]);
            break;
        case 2:
            ArcTo(dc, m[1], m[2], m[3], m[4], m[5], m[6], m[7], m[8]);
            break;
        default:
            Arc(dc, m[1], m[2], m[3], m[4], m[5], m[6], m[7], m[8]);
        }
}

// Draws the outline into a bitmap of twice the picture's size. Magenta is the same value in RGB and
// BGR order.
Raster drawnOutline(const Drawing& drawing, int width, int height)
{
    Raster pixels(width * 2, height * 2);
    BITMAPINFO information{};
    information.bmiHeader.biSize = sizeof information.bmiHeader;
    information.bmiHeader.biWidth = pixels.width;
    information.bmiHeader.biHeight = -pixels.height;
    information.bmiHeader.biPlanes = 1;
    information.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    const HBITMAP bitmap =
        CreateDIBSection(nullptr, &information, DIB_RGB_COLORS, &bits, nullptr, 0);
    const HPEN pen = CreatePen(PS_SOLID, 1, magenta);
    const HDC dc = CreateCompatibleDC(nullptr);
    SelectObject(dc, bitmap);
    SelectObject(dc, pen);
    draw(dc, drawing.moves);
    GdiFlush();
    std::memcpy(pixels.pixels.data(), bits, pixels.pixels.size() * 4);
    DeleteDC(dc);
    DeleteObject(bitmap);
    DeleteObject(pen);
    return pixels;
}

// The body's first column in a row, and the base colour of its section.
struct BodyRow {
    int edge;
    std::uint32_t colour;
};

// One entry per picture row. In rows below the tool, the body starts after the centre column. All
// rows of a run have the colour of its first row.
std::vector<BodyRow> findBody(const Raster& outline, const Marks& marks, int width, int height)
{
    const auto isOutline = [&](int x, int y) { return outline.at(x, y) == magenta; };
    std::vector<BodyRow> rows;
    while (static_cast<int>(rows.size()) < height) {
        const int y = static_cast<int>(rows.size());
        const std::vector<int> run = bodyRun(isOutline, y, width, height, marks);
        if (run.empty())
            break;
        rows.resize(static_cast<size_t>(run[2]), {run[0], sectionColour(y, marks)});
    }
    rows.resize(static_cast<size_t>(height), {width / 2 + 1, 0});
    return rows;
}

// Rounds half away from zero.
int rounded(int numerator, int denominator)
{
    return static_cast<int>(std::lround(static_cast<double>(numerator) / denominator));
}

} // namespace

Raster toolPicture(const torvapdm::ToolArguments& arguments)
{
    const int width = static_cast<int>(arguments.width);
    const int height = static_cast<int>(arguments.height);
    const int middle = width / 2;
    const Drawing drawing = drawingOf(arguments);
    const std::vector<BodyRow> body =
        findBody(drawnOutline(drawing, width, height), drawing.marks, width, height);

    Raster picture(width, height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            // The right half mirrors the left half, including the centre column.
            const int column = x <= middle ? x : 2 * middle + 1 - x;
            const BodyRow& row = body[static_cast<size_t>(y)];
            picture.at(x, y) =
                column < row.edge
                    ? adjusted(0xD8930E, rounded(column * 80, width), rounded(column * -50, width))
                    : bodyColour(row.colour, column - row.edge, middle - row.edge);
        }
    return picture;
}

} // namespace reference
