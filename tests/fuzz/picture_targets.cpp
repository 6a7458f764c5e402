// The tool picture: the geometry of the tool and its outline.
#include "fuzz/target.h"
#include "toolpicture/outline.h"
#include "toolpicture/reference.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace fuzzing {

namespace {

using torvapdm::OutlineMove;
using torvapdm::ToolArguments;

ToolArguments takeArguments(Input& input)
{
    ToolArguments arguments{};
    arguments.width = input.number<std::uint16_t>();
    arguments.height = input.number<std::uint16_t>();
    arguments.toolType = input.number<unsigned char>() % 17;
    for (double* const value :
         {&arguments.diameter, &arguments.cornerRadius, &arguments.tipAngle, &arguments.fluteLength,
          &arguments.shoulderLength, &arguments.overallLength, &arguments.shankDiameter})
        *value = input.number<double>();
    return arguments;
}

// NaN arguments have no reference result, even if the kind of tool does not use them.
bool areNumbers(const ToolArguments& a)
{
    return !std::isnan(a.diameter + a.cornerRadius + a.tipAngle + a.fluteLength + a.shoulderLength +
                       a.overallLength + a.shankDiameter);
}

// True for arguments and picture sizes that must produce a picture.
bool isOrdinary(const ToolArguments& a)
{
    for (const double length :
         {a.cornerRadius, a.fluteLength, a.shoulderLength, a.overallLength, a.shankDiameter})
        if (!(length >= -100 && length <= 100))
            return false;
    const bool isSharp = a.tipAngle > 0 && a.tipAngle < 10;
    const bool isBlunt = a.tipAngle > 80 && a.tipAngle <= 90;
    return a.width <= 4096 && a.diameter >= 0.1 && a.diameter <= 100 && !isSharp && !isBlunt;
}

std::vector<std::vector<int>> described(const std::vector<OutlineMove>& moves)
{
    std::vector<std::vector<int>> rows;
    for (const OutlineMove& m : moves)
        if (m.kind == OutlineMove::Kind::moveTo || m.kind == OutlineMove::Kind::lineTo)
            rows.push_back({static_cast<int>(m.kind), m.to.x, m.to.y});
        else
            rows.push_back({static_cast<int>(m.kind), m.boxTopLeft.x, m.boxTopLeft.y,
                            m.boxBottomRight.x, m.boxBottomRight.y, m.start.x, m.start.y, m.end.x,
                            m.end.y});
    return rows;
}

void checkToolDrawing(Input& input, Differences& differences)
{
    const ToolArguments arguments = takeArguments(input);
    const bool isPicture = arguments.width > 0 && arguments.height > 0 &&
                           arguments.height <= 4096 &&
                           2.0 * arguments.width * 2.0 * arguments.height * 4.0 < 2147483648.0;
    differences.compare("is a picture's size",
                        torvapdm::isPictureSize(arguments.width, arguments.height), isPicture);
    if (!isPicture)
        return;
    const torvapdm::PictureSize picture = {static_cast<int>(arguments.width),
                                           static_cast<int>(arguments.height)};
    const auto tool = torvapdm::toolDimensions(torvapdm::guardedArguments(arguments));
    const bool hasOutline = torvapdm::isDrawable(tool, torvapdm::toolScale(tool, picture));
    const auto outline = hasOutline
                             ? torvapdm::toolOutline(tool, torvapdm::toolGeometry(tool, picture))
                             : torvapdm::ToolOutline{};
    const bool isDrawn = hasOutline && torvapdm::canBeDrawn(outline);
    if (isOrdinary(arguments))
        differences.compare("is drawn", isDrawn, true);
    // If there is no picture, there is no reference result to compare with.
    if (!isDrawn || !areNumbers(arguments))
        return;
    const auto [moves, marks] = reference::drawingOf(arguments);
    differences.compare("moves", described(outline.moves), moves);
    differences.compare("cap's end", outline.marks.cap, marks.cap);
    differences.compare("shank's end", outline.marks.shank, marks.shank);
    differences.compare("shoulder's end", outline.marks.shoulder, marks.shoulder);
}

std::string asking(std::uint16_t width, std::uint16_t height, int kind,
                   const std::array<double, 7>& values)
{
    return raw(width) + raw(height) + static_cast<char>(kind) + raw(values);
}

std::vector<std::string> drawingSeeds()
{
    std::vector<std::string> seeds = {asking(100, 100, 4, {8, 0, 100, 30, 50, 90, 8}),
                                      asking(100, 100, 1, {-1, -1, -1, -1, -1, -1, -1}),
                                      asking(7, 4096, 3, {1, 0.5, 45, 100, 100, 200, 1}),
                                      asking(200, 200, 14, {20, -4, 10, 15, 20, 30, 20}),
                                      asking(200, 200, 0, {0.001, 0, 0, 50, 60, 100, 0.001}),
                                      asking(65535, 4096, 2, {1e300, 1e300, 1, 1e300, 1, 1, 1})};
    for (int kind = 0; kind <= 15; ++kind) {
        seeds.push_back(asking(200, 300, kind, {10, 2, 0, 25, 40, 80, 10}));
        seeds.push_back(asking(300, 200, kind, {12, 3, 15, 20, 20, 60, 16}));
    }
    return seeds;
}

} // namespace

std::vector<Target> pictureTargets()
{
    return {{"tool_drawing",
             checkToolDrawing,
             drawingSeeds(),
             {raw(0.5), raw(1.0), raw(-1.0), raw(10.0), raw(20.2), raw(45.0), raw(90.0), raw(1e-9),
              raw(1e9), raw(1e308), raw(std::uint16_t{100})}}};
}

} // namespace fuzzing
