// A second, straightforward implementation of the tool picture's colours, outline and body runs,
// for the tests and the fuzzer. It includes no platform header.
//
// Colour arithmetic uses double precision and rounds each step to single precision explicitly.
#pragma once

#include "toolpicture/dimensions.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <vector>

namespace reference {

// ---- Colours -----------------------------------------------------------------------------------

struct Hls {
    int hue, lightness, saturation;
};

// Red, green, blue; or hue, lightness, saturation.
inline std::array<int, 3> partsOf(std::uint32_t colour)
{
    return {static_cast<int>(colour % 256), static_cast<int>(colour / 256 % 256),
            static_cast<int>(colour / 65536 % 256)};
}

inline std::uint32_t packedOf(int low, int second, int third)
{
    return static_cast<std::uint32_t>(low + second * 256 + third * 65536);
}

// Rounds to single precision.
inline double single(double value)
{
    return static_cast<double>(static_cast<float>(value));
}

inline int cut(double unit)
{
    return static_cast<int>(single(single(unit) * 255));
}

inline Hls hlsOf(std::uint32_t colour)
{
    const auto parts = partsOf(colour);
    const int most = *std::ranges::max_element(parts);
    const int least = *std::ranges::min_element(parts);
    const int range = most - least, sum = most + least;
    Hls hls = {0, cut(single(sum / 510.0)), 0};
    if (range == 0)
        return hls;
    // The largest component determines the base hue; of equal components, the last one counts.
    const size_t at = parts[2] == most ? 2 : parts[1] == most ? 1 : 0;
    const auto distance = [&](size_t i) {
        return single(static_cast<double>(most - parts[i % 3]) / range);
    };
    const double base = at == 0 ? 6 : at == 1 ? 2 : 4;
    double hue = single(60 * single(single(base + distance(at + 2)) - distance(at + 1)));
    if (hue > 360)
        hue = single(hue - 360);
    hls.hue = static_cast<int>(single(single(hue * 255) / 360));
    hls.saturation = cut(static_cast<double>(range) / (sum <= 255 ? sum : 510 - sum));
    return hls;
}

inline std::uint32_t rgbOf(Hls hls)
{
    if (hls.saturation == 0)
        return packedOf(hls.lightness, hls.lightness, hls.lightness);
    const double l = single(hls.lightness / 255.0);
    const double s = single(hls.saturation / 255.0);
    const double q =
        hls.lightness <= 127 ? single(l * single(1 + s)) : single(single(l + s) - single(l * s));
    const double p = single(2 * l - q);
    const double rise = single(q - p);
    const auto component = [&](double turn) {
        double hue = single(single(hls.hue * 360 / 255.0) + turn);
        hue = hue > 360 ? single(hue - 360) : hue < 0 ? single(hue + 360) : hue;
        if (hue < 60)
            return cut(single(p + single(single(rise * hue) / 60)));
        if (hue < 180)
            return cut(q);
        return hue < 240 ? cut(single(p + single(single(rise * single(240 - hue)) / 60))) : cut(p);
    };
    return packedOf(component(120), component(0), component(-120));
}

// For percentages of -100 and above.
inline std::uint32_t adjusted(std::uint32_t colour, int lightnessPercent, int saturationPercent)
{
    const auto shifted = [](int component, int percent) {
        return percent > 0 ? (component + (255 - component) * percent / 100) % 256
                           : component * (100 + percent) / 100;
    };
    const Hls hls = hlsOf(colour);
    return rgbOf({hls.hue, shifted(hls.lightness, lightnessPercent),
                  shifted(hls.saturation, saturationPercent)});
}

// ---- Outline -----------------------------------------------------------------------------------

struct Marks {
    int cap, shank, shoulder;
};

struct Drawing {
    // The first element is the kind: 0 MoveTo, 1 LineTo, 2 ArcTo, 3 Arc. The rest are coordinates:
    // the point, or the arc's bounding box (left, top, right, bottom), start and end.
    std::vector<std::vector<int>> moves;
    Marks marks;
};

constexpr double pi = 3.14159265358979323846;

inline double tangent(double degrees)
{
    return std::tan(degrees * pi / 180);
}

// Truncates and clamps to the coordinate range of GDI calls.
inline int trunc(double value)
{
    constexpr double farthest = 134217727;
    return static_cast<int>(std::trunc(std::min(std::max(value, -farthest), farthest)));
}

struct Tool {
    double diameter, radius, angle, flute, shoulder, overall, shank;
    bool isPointed, isReversed;
};

inline Tool toolOf(const torvapdm::ToolArguments& a)
{
    const unsigned kind = a.toolType;
    const bool isCone = kind == 6 || kind == 10 || kind == 11;
    const bool isPointed = isCone || kind == 4 || kind == 5;
    const bool hasAngle = isPointed || kind == 3 || kind == 14;
    const double diameter = a.diameter <= 0 ? 1.0 : a.diameter;
    const double half = diameter / 2;
    const double flute = a.fluteLength < 0 ? 2.0 : a.fluteLength;
    const double shoulder = std::max(a.shoulderLength, flute);
    const double angle = hasAngle && a.tipAngle >= 0 && a.tipAngle <= 90 ? a.tipAngle : 0;
    double radius = isPointed || kind == 3 ? a.cornerRadius : 0;
    if (kind == 1)
        radius = half;
    else if (kind == 2)
        radius = std::min(a.cornerRadius, half);
    else if (kind == 14)
        radius = -std::min(std::fabs(a.cornerRadius), half);
    return {.diameter = diameter,
            .radius = angle <= 0.001 ? std::min(std::fabs(radius), half) : std::fabs(radius),
            .angle = angle,
            .flute = isCone ? 0 : flute,
            .shoulder = kind == 3 ? flute : shoulder,
            .overall = std::max(a.overallLength, shoulder),
            .shank = a.shankDiameter <= 0 ? diameter : a.shankDiameter,
            .isPointed = isPointed,
            .isReversed = radius < 0};
}

// All lengths must be finite.
inline Drawing drawingOf(const torvapdm::ToolArguments& arguments)
{
    const int width = static_cast<int>(arguments.width);
    const int height = static_cast<int>(arguments.height);
    const Tool tool = toolOf(arguments);
    Drawing drawing{};
    const auto moveTo = [&](int x, int y) { drawing.moves.push_back({0, x, y}); };
    const auto lineTo = [&](int x, int y) { drawing.moves.push_back({1, x, y}); };

    const double halfAngle = tool.angle <= 0 ? 59.0 : tool.angle / 2;
    const double point = tool.isPointed ? tangent(90 - halfAngle) * tool.diameter / 2 : 0;
    const double total = tool.overall + point;
    const double taper = tool.isPointed ? 0 : tangent(tool.angle) * tool.flute;
    const double drawnWidth = std::max(tool.shank, tool.diameter + 2 * taper);
    double scale = std::max(drawnWidth, total) / std::clamp(std::min(width, height), 1, 1000);
    if (scale <= 0)
        scale = 1;
    scale = scale * (width > height ? 1.09 : 1.08);
    const double half = tool.diameter * 0.5 + taper;
    if (half / scale < 1)
        scale = half;
    const int cx = width / 2;
    const int fluteX = cx - trunc(half / scale);
    const int tipX = cx - trunc(tool.diameter * 0.5 / scale);
    const int shankX = cx - trunc(tool.shank / (2 * scale));
    int tipRow = trunc(total / scale + height / 20);

    double cap = std::max(total / 2, 2.0);
    if (cap > 10 && cap < 30)
        cap = 30;
    if (cap / scale * 1.2 > width)
        cap = width / 1.2;
    const int capHalf = trunc(cap / (2 * scale));
    const int capX = cx - (capHalf < 2 ? 2 : std::min(capHalf, cx - 5));
    moveTo(capX, 0);
    lineTo(capX + 5, 5);
    lineTo(shankX, 5);
    int y = 5;
    drawing.marks.cap = y;

    if (tool.overall > tool.shoulder) {
        y += trunc((tool.overall - tool.shoulder) / scale);
        lineTo(shankX, y);
    }
    drawing.marks.shank = y;
    if (tool.shoulder > tool.flute) {
        lineTo(fluteX, y);
        y += trunc((tool.shoulder - tool.flute) / scale);
        lineTo(fluteX, y);
    }
    drawing.marks.shoulder = y;
    lineTo(fluteX, y);

    const int r = trunc(tool.radius / scale);
    const int top = tipRow - r + 1;
    if (tool.isPointed) {
        y = trunc(y + tool.flute / scale);
        lineTo(fluteX, y);
        tipRow = trunc(y + point / scale);
        lineTo(cx, tipRow);
    } else if (tool.radius <= 0 || tool.radius / scale < 2) {
        lineTo(std::clamp(tipX, 0, 32767), tipRow);
    } else if (taper > 0.001) {
        const double k = taper < 90 ? tangent(45 - taper / 2) : 1e-7;
        const double radius = std::min(tool.diameter / (2 * k), tool.radius);
        const int a = trunc(tangent(45 - tool.angle / 2) * radius / scale);
        const int rp = trunc(radius / scale);
        const double angle = tool.angle * pi / 180;
        if (a >= 1)
            drawing.moves.push_back({2, tipX + a - rp, tipRow - 2 * rp + 1, tipX + a + rp,
                                     tipRow + 1, tipX - trunc(a * std::sin(angle)),
                                     tipRow - trunc(a * std::cos(angle)), tipX + a, tipRow});
    } else {
        lineTo(tipX, top);
        if (tool.isReversed) {
            drawing.moves.push_back(
                {3, tipX - r, top, tipX + r, top + 2 * r, tipX + r, tipRow, tipX, top});
            moveTo(tipX + r, tipRow);
        } else {
            drawing.moves.push_back(
                {2, tipX, top - r, tipX + 2 * r, top + r, tipX, top, tipX + r, top + r});
        }
    }
    lineTo(cx, tipRow);
    return drawing;
}

// ---- Body --------------------------------------------------------------------------------------

// The consecutive rows from `top` in which the body starts in the same column. Returns that column,
// `top` and the row after the last, or nothing if the left half of row `top` has no outline.
inline std::vector<int> bodyRun(const std::function<bool(int x, int y)>& isOutline, int top,
                                int width, int height, const Marks& marks)
{
    int x = 0;
    while (x < width / 2 && !isOutline(x, top))
        ++x;
    if (x == width / 2)
        return {};
    int last = top;
    while (last != marks.cap && last != marks.shank && last != marks.shoulder &&
           last + 1 < height && isOutline(x, last + 1) && (x == 0 || !isOutline(x - 1, last + 1)))
        ++last;
    return {x, top, last + 1};
}

// The base colour of a body row, and the shaded colour `t` of `span` columns from the body's edge.
inline std::uint32_t sectionColour(int y, const Marks& marks)
{
    if (y <= marks.cap)
        return 0x080808;
    if (y < marks.shank)
        return 0x008080;
    return y < marks.shoulder ? 0x108010 : 0x801010;
}

inline std::uint32_t bodyColour(std::uint32_t section, int t, int span)
{
    const double p = std::sin(t * 90.0 / span * pi / 180) * 60;
    return adjusted(section, static_cast<int>(p), -static_cast<int>(p / 40));
}

} // namespace reference
