#include "toolpicture/reference_picture.h"

#include "toolpicture/reference_colours.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <initializer_list>
#include <windows.h>

using testing_support::Raster;

namespace reference {

namespace {

constexpr double toRadians = 3.14159265358979323846 / 180;
constexpr std::uint32_t magenta = 0xFF00FF;

int whole(double value)
{
    return static_cast<int>(std::trunc(value));
}

int between(int value, int low, int high)
{
    return value < low ? low : value > high ? high : value;
}

// A drawing board of twice the picture's size.
class Board {
public:
    Board(int width, int height) : pixels_(width * 2, height * 2)
    {
        BITMAPINFO information{};
        information.bmiHeader.biSize = sizeof information.bmiHeader;
        information.bmiHeader.biWidth = pixels_.width;
        information.bmiHeader.biHeight = -pixels_.height;
        information.bmiHeader.biPlanes = 1;
        information.bmiHeader.biBitCount = 32;
        bitmap_ = CreateDIBSection(nullptr, &information, DIB_RGB_COLORS, &bits_, nullptr, 0);
        SelectObject(dc, bitmap_);
        SelectObject(dc, pen_);
    }
    ~Board()
    {
        DeleteDC(dc);
        DeleteObject(bitmap_);
        DeleteObject(pen_);
    }
    Board(const Board&) = delete;
    Board& operator=(const Board&) = delete;

    // What has been drawn. The outline's colour reads the same in either order of its bytes.
    Raster pixels()
    {
        GdiFlush();
        std::memcpy(pixels_.pixels.data(), bits_, pixels_.pixels.size() * 4);
        return pixels_;
    }

    const HDC dc = CreateCompatibleDC(nullptr);

private:
    Raster pixels_;
    void* bits_ = nullptr;
    HBITMAP bitmap_ = nullptr;
    const HPEN pen_ = CreatePen(PS_SOLID, 1, magenta);
};

struct Tool {
    double diameter, radius, angle, flute, shoulder, overall, shank;
    bool pointed = false;
};

bool isOneOf(std::uint32_t kind, std::initializer_list<std::uint32_t> kinds)
{
    return std::find(kinds.begin(), kinds.end(), kind) != kinds.end();
}

Tool toolOf(const torvapdm::ToolArguments& a)
{
    Tool t{};
    t.diameter = a.diameter > 0 ? a.diameter : 1;
    t.angle = a.tipAngle < 0 || a.tipAngle > 90 ? 0 : a.tipAngle;
    t.flute = a.fluteLength < 0 ? 2 : a.fluteLength;
    t.shoulder = a.shoulderLength < t.flute ? t.flute : a.shoulderLength;
    t.overall = a.overallLength < t.shoulder ? t.shoulder : a.overallLength;
    t.shank = a.shankDiameter > 0 ? a.shankDiameter : t.diameter;
    const double half = t.diameter / 2;
    const std::uint32_t kind = a.toolType;
    t.pointed = isOneOf(kind, {4, 5, 6, 10, 11});
    if (isOneOf(kind, {3, 4, 5, 6, 10, 11}))
        t.radius = a.cornerRadius;
    else if (kind == 1)
        t.radius = half;
    else if (kind == 2)
        t.radius = a.cornerRadius < half ? a.cornerRadius : half;
    else if (kind == 14)
        t.radius = -(std::fabs(a.cornerRadius) < half ? std::fabs(a.cornerRadius) : half);
    if (!isOneOf(kind, {3, 4, 5, 6, 10, 11, 14}))
        t.angle = 0;
    if (kind == 3)
        t.shoulder = t.flute;
    if (isOneOf(kind, {6, 10, 11}))
        t.flute = 0;
    return t;
}

// Where the tool lies in the picture.
struct Layout {
    bool reversed;
    double radius, point, taper, scale;
    int middle, left, fluteLeft, shankLeft, capLeft, tip;
};

double scaleOf(const Tool& t, double taper, double total, int width, int height)
{
    const double wide = std::fmax(t.shank, t.diameter + 2 * taper);
    const int shorter = between(width < height ? width : height, 1, 1000);
    const double scale = std::fmax(wide, total) / shorter * (width > height ? 1.09 : 1.08);
    const double half = t.diameter / 2 + taper;
    return half / scale < 1 ? half : scale;
}

int capHalfOf(double total, double scale, int width)
{
    double v = std::fmax(total / 2, 2);
    if (v > 10 && v < 30)
        v = 30;
    if (v / scale * 1.2 > width)
        v = width / 1.2;
    return between(whole(v / 2 / scale), 2, width / 2 - 5);
}

Layout layoutOf(const Tool& t, int width, int height)
{
    Layout at{};
    at.reversed = t.radius < 0;
    at.radius = std::fabs(t.radius);
    if (t.angle <= 0.001 && at.radius > t.diameter / 2)
        at.radius = t.diameter / 2;
    const double halfAngle = t.angle > 0 ? t.angle / 2 : 59;
    at.point = t.pointed ? std::tan((90 - halfAngle) * toRadians) * t.diameter / 2 : 0;
    at.taper = t.pointed ? 0 : std::tan(t.angle * toRadians) * t.flute;
    const double total = t.overall + at.point;
    at.scale = scaleOf(t, at.taper, total, width, height);
    at.middle = width / 2;
    at.fluteLeft = at.middle - whole((t.diameter / 2 + at.taper) / at.scale);
    at.left = at.middle - whole(t.diameter / 2 / at.scale);
    at.shankLeft = at.middle - whole(t.shank / 2 / at.scale);
    at.capLeft = at.middle - capHalfOf(total, at.scale, width);
    at.tip = whole(total / at.scale + height / 20);
    return at;
}

struct Marks {
    int cap, shank, shoulder;
};

Marks drawSections(HDC dc, const Tool& t, const Layout& at)
{
    MoveToEx(dc, at.capLeft, 0, nullptr);
    LineTo(dc, at.capLeft + 5, 5);
    LineTo(dc, at.shankLeft, 5);
    Marks marks = {5, 5, 0};
    if (t.overall > t.shoulder) {
        marks.shank += whole((t.overall - t.shoulder) / at.scale);
        LineTo(dc, at.shankLeft, marks.shank);
    }
    marks.shoulder = marks.shank;
    LineTo(dc, at.fluteLeft, marks.shank);
    if (t.shoulder > t.flute)
        marks.shoulder += whole((t.shoulder - t.flute) / at.scale);
    LineTo(dc, at.fluteLeft, marks.shoulder);
    return marks;
}

void drawTaperedCorner(HDC dc, const Tool& t, const Layout& at)
{
    const double k = at.taper < 90 ? std::tan((45 - at.taper / 2) * toRadians) : 1e-7;
    const double radius = std::fmin(t.diameter / (2 * k), at.radius);
    const int a = whole(std::tan((45 - t.angle / 2) * toRadians) * radius / at.scale);
    const int rp = whole(radius / at.scale);
    if (a >= 1)
        ArcTo(dc, at.left + a - rp, at.tip - 2 * rp + 1, at.left + a + rp, at.tip + 1,
              at.left - whole(a * std::sin(t.angle * toRadians)),
              at.tip - whole(a * std::cos(t.angle * toRadians)), at.left + a, at.tip);
}

void drawRoundCorner(HDC dc, const Layout& at)
{
    const int x = at.left;
    const int r = whole(at.radius / at.scale);
    const int y0 = at.tip - r + 1;
    LineTo(dc, x, y0);
    if (!at.reversed) {
        ArcTo(dc, x, y0 - r, x + 2 * r, y0 + r, x, y0, x + r, y0 + r);
        return;
    }
    Arc(dc, x - r, y0, x + r, y0 + 2 * r, x + r, at.tip, x, y0);
    MoveToEx(dc, x + r, at.tip, nullptr);
}

// Gives the tip's row.
int drawEnd(HDC dc, const Tool& t, const Layout& at, int y)
{
    if (t.pointed) {
        y = whole(y + t.flute / at.scale);
        LineTo(dc, at.fluteLeft, y);
        LineTo(dc, at.middle, whole(y + at.point / at.scale));
        return whole(y + at.point / at.scale);
    }
    if (at.radius <= 0 || at.radius / at.scale < 2)
        LineTo(dc, std::max(at.left, 0), at.tip);
    else if (at.taper > 0.001)
        drawTaperedCorner(dc, t, at);
    else
        drawRoundCorner(dc, at);
    return at.tip;
}

// Draws the outline's left half and gives its marks.
Marks drawOutline(HDC dc, const Tool& t, int width, int height)
{
    const Layout at = layoutOf(t, width, height);
    const Marks marks = drawSections(dc, t, at);
    const int tip = drawEnd(dc, t, at, marks.shoulder);
    LineTo(dc, at.middle, tip);
    return marks;
}

std::uint32_t colourOfSection(int y, const Marks& marks)
{
    return y <= marks.cap       ? 0x080808
           : y < marks.shank    ? 0x008080
           : y < marks.shoulder ? 0x108010
                                : 0x801010;
}

// The first column with the outline, or the middle one.
int firstColumn(const Raster& outline, int y, int middle)
{
    int x = 0;
    while (x < middle && outline.at(x, y) != magenta)
        ++x;
    return x;
}

bool continues(const Raster& outline, int x, int y)
{
    return outline.at(x, y) == magenta && (x == 0 || outline.at(x - 1, y) != magenta);
}

// Each row's first column of the body; the middle and one more below the tool. Rows that belong to
// one run take the colour of its first row, which is left in `colours`.
std::vector<int> findBody(const Raster& outline, const Marks& marks, int width, int height,
                          std::vector<std::uint32_t>& colours)
{
    const int middle = width / 2;
    std::vector<int> first;
    for (int y = 0; y < height && firstColumn(outline, y, middle) < middle;
         y = static_cast<int>(first.size())) {
        const int x = firstColumn(outline, y, middle);
        int last = y;
        while (last != marks.cap && last != marks.shank && last != marks.shoulder &&
               last + 1 < height && continues(outline, x, last + 1))
            ++last;
        first.resize(static_cast<size_t>(last) + 1, x);
        colours.resize(first.size(), colourOfSection(y, marks));
    }
    first.resize(static_cast<size_t>(height), middle + 1);
    colours.resize(first.size());
    return first;
}

// Half away from zero.
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
    Board board(width, height);
    const Marks marks = drawOutline(board.dc, toolOf(arguments), width, height);
    std::vector<std::uint32_t> colours;
    const std::vector<int> first = findBody(board.pixels(), marks, width, height, colours);

    Raster picture(width, height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            // The right half is the left one, which begins anew beside the middle.
            const int column = x <= middle ? x : 2 * middle + 1 - x;
            const int edge = first[static_cast<size_t>(y)];
            if (column < edge) {
                picture.at(x, y) =
                    adjusted(0xD8930E, rounded(column * 80, width), rounded(column * -50, width));
                continue;
            }
            const double degrees = (column - edge) * 90.0 / (middle - edge);
            const double p = std::sin(degrees * toRadians) * 60;
            picture.at(x, y) = adjusted(colours[static_cast<size_t>(y)], whole(p), -whole(p / 40));
        }
    return picture;
}

} // namespace reference
