// A second, straightforward implementation of the tool picture, for the tests. It works on pixels
// in memory; only the outline is drawn by GDI.
#pragma once

#include "support/raster.h"
#include "toolpicture/reference.h"

#include <cmath>
#include <cstring>
#include <windows.h>

namespace reference {

// Draws the outline into a bitmap of twice the picture's size, with a magenta pen. Magenta is the
// same value in RGB and BGR order.
inline testing_support::Raster drawnOutline(const Drawing& drawing, int width, int height)
{
    testing_support::Raster pixels(width * 2, height * 2);
    BITMAPINFO information{};
    information.bmiHeader = {
        sizeof information.bmiHeader, pixels.width, -pixels.height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    const HBITMAP bitmap =
        CreateDIBSection(nullptr, &information, DIB_RGB_COLORS, &bits, nullptr, 0);
    const HPEN pen = CreatePen(PS_SOLID, 1, RGB(255, 0, 255));
    const HDC dc = CreateCompatibleDC(nullptr);
    SelectObject(dc, bitmap);
    SelectObject(dc, pen);
    for (const std::vector<int>& m : drawing.moves)
        if (m[0] == 0)
            MoveToEx(dc, m[1], m[2], nullptr);
        else if (m[0] == 1)
            LineTo(dc, m[1], m[2]);
        else
            (m[0] == 2 ? ArcTo : Arc)(dc, m[1], m[2], m[3], m[4], m[5], m[6], m[7], m[8]);
    GdiFlush();
    std::memcpy(pixels.pixels.data(), bits, pixels.pixels.size() * 4);
    DeleteDC(dc);
    DeleteObject(bitmap);
    DeleteObject(pen);
    return pixels;
}

// All lengths must be finite, and the outline within GDI's coordinate range.
inline testing_support::Raster toolPicture(const torvapdm::ToolArguments& arguments)
{
    const int width = static_cast<int>(arguments.width);
    const int height = static_cast<int>(arguments.height);
    const int middle = width / 2;
    const Drawing drawing = drawingOf(arguments);
    const testing_support::Raster outline = drawnOutline(drawing, width, height);
    const auto isOutline = [&](int x, int y) { return outline.at(x, y) == RGB(255, 0, 255); };
    // Half away from zero.
    const auto percent = [&](int column, int whole) {
        return static_cast<int>(std::lround(static_cast<double>(column * whole) / width));
    };

    testing_support::Raster picture(width, height);
    // All rows of a run start in the same column and have the colour of its first row. In rows
    // below the tool, the body starts after the centre column.
    for (int y = 0; y < height;) {
        std::vector<int> run = bodyRun(isOutline, y, width, height, drawing.marks);
        if (run.empty())
            run = {middle + 1, y, height};
        const int edge = run[0];
        const std::uint32_t section = sectionColour(y, drawing.marks);
        for (; y < run[2]; ++y)
            for (int x = 0; x < width; ++x) {
                // The right half mirrors the left half, including the centre column.
                const int column = x <= middle ? x : 2 * middle + 1 - x;
                picture.at(x, y) =
                    column < edge ? adjusted(0xD8930E, percent(column, 80), percent(column, -50))
                                  : bodyColour(section, column - edge, middle - edge);
            }
    }
    return picture;
}

} // namespace reference
