// Where a tool and its outline lie in a picture: DrawTool's arguments, the picture's size cut to
// what can be one.
#include "fuzz/differences.h"
#include "fuzz/input.h"
#include "fuzz/plain_drawing.h"
#include "fuzz/targets.h"
#include "toolpicture/outline.h"

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

// An argument that is no number has no plain rule, even where its kind of tool does without it.
bool areNumbers(const ToolArguments& a)
{
    for (const double value : {a.diameter, a.cornerRadius, a.tipAngle, a.fluteLength,
                               a.shoulderLength, a.overallLength, a.shankDiameter})
        if (std::isnan(value))
            return false;
    return true;
}

// A tool and a picture's size that anybody would expect a picture of.
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
    for (const OutlineMove& move : moves) {
        if (move.kind == OutlineMove::Kind::moveTo || move.kind == OutlineMove::Kind::lineTo)
            rows.push_back({static_cast<int>(move.kind), move.to.x, move.to.y});
        else
            rows.push_back({static_cast<int>(move.kind), move.boxTopLeft.x, move.boxTopLeft.y,
                            move.boxBottomRight.x, move.boxBottomRight.y, move.start.x,
                            move.start.y, move.end.x, move.end.y});
    }
    return rows;
}

std::string checkToolDrawing(std::string_view bytes)
{
    Input input(bytes);
    const ToolArguments arguments = takeArguments(input);
    const bool isPicture = arguments.width > 0 && arguments.height > 0 &&
                           arguments.height <= 4096 && plainBytes(arguments) < 2147483648.0;
    Differences differences;
    differences.compare("is a picture's size",
                        torvapdm::isPictureSize(arguments.width, arguments.height), isPicture);
    if (!isPicture)
        return differences.text();
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
    // What has no picture has no plain rule: it has to be told, and no more.
    if (!isDrawn || !areNumbers(arguments))
        return differences.text();
    const PlainDrawing expected = plainDrawing(arguments);
    differences.compare("moves", described(outline.moves), expected.moves);
    differences.compare(
        "marks", std::vector<int>{outline.marks.cap, outline.marks.shank, outline.marks.shoulder},
        expected.marks);
    return differences.text();
}

std::string asking(std::uint16_t width, std::uint16_t height, int kind,
                   const std::vector<double>& values)
{
    std::string bytes = raw(width) + raw(height) + static_cast<char>(kind);
    for (const double value : values)
        bytes += raw(value);
    return bytes;
}

std::vector<std::string> everyKind()
{
    std::vector<std::string> seeds;
    for (int kind = 0; kind <= 15; ++kind) {
        seeds.push_back(asking(200, 300, kind, {10, 2, 0, 25, 40, 80, 10}));
        seeds.push_back(asking(300, 200, kind, {12, 3, 15, 20, 20, 60, 16}));
    }
    seeds.push_back(asking(100, 100, 4, {8, 0, 100, 30, 50, 90, 8}));
    seeds.push_back(asking(100, 100, 1, {-1, -1, -1, -1, -1, -1, -1}));
    seeds.push_back(asking(7, 4096, 3, {1, 0.5, 45, 100, 100, 200, 1}));
    seeds.push_back(asking(200, 200, 14, {20, -4, 10, 15, 20, 30, 20}));
    seeds.push_back(asking(200, 200, 0, {0.001, 0, 0, 50, 60, 100, 0.001}));
    seeds.push_back(asking(65535, 4096, 2, {1e300, 1e300, 1, 1e300, 1, 1, 1}));
    return seeds;
}

} // namespace

Target toolDrawingTarget()
{
    return {"tool_drawing",
            checkToolDrawing,
            everyKind(),
            {raw(0.5), raw(1.0), raw(-1.0), raw(10.0), raw(20.2), raw(45.0), raw(90.0), raw(1e-9),
             raw(1e9), raw(1e308), raw(std::uint16_t{100})}};
}

} // namespace fuzzing
