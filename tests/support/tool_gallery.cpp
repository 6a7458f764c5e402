// Draws tools in the same way as the Companion: loads the library in its own folder and calls
// DrawTool for a tool of every kind. For each picture it writes a line to standard output: the
// file's name and the lines that describe it, separated by bars. Exits with 1 if the library cannot
// be loaded.
//
//   toolimage-2.bmp|2  bull nose end mill|dia. 20, shank 16|flutes 30, length 80|radius 4, angle 0
#include "support/draw_tool_entry.h"

#include <cstdint>
#include <cstdio>
#include <windows.h>

namespace {

constexpr std::uint32_t pictureWidth = 220;
constexpr std::uint32_t pictureHeight = 260;

// In millimetres and degrees.
struct Tool {
    std::uint32_t kind;
    const char* name;
    double diameter;
    double cornerRadius;
    double tipAngle;
    double fluteLength;
    double shoulderLength;
    double overallLength;
    double shankDiameter;
};

const Tool tools[] = {
    {0, "unknown", 20, 0, 0, 35, 45, 80, 20},
    {1, "ball end mill", 16, 0, 0, 32, 45, 80, 12},
    {2, "bull nose end mill", 20, 4, 0, 30, 42, 80, 16},
    {3, "taper mill", 8, 1.5, 10, 40, 40, 80, 16},
    {4, "drill", 10, 0, 0, 50, 58, 90, 12},
    {5, "spot drill", 16, 0, 90, 25, 35, 80, 16},
    {6, "countersink", 25, 0, 90, 0, 15, 60, 12},
    {7, "end mill", 20, 0, 0, 38, 50, 85, 20},
    {8, "slot mill", 30, 0, 0, 8, 14, 70, 16},
    {9, "reamer", 12, 0, 0, 30, 60, 95, 10},
    {10, "chamfer mill", 16, 0, 60, 0, 22, 65, 16},
    {11, "engraver", 6, 0, 30, 0, 8, 50, 6},
    {12, "tap", 10, 0, 0, 22, 50, 85, 8},
    {13, "boring bar", 18, 0, 0, 6, 60, 100, 25},
    {14, "corner rounding mill", 20, 5, 0, 20, 30, 70, 12},
    {15, "unknown", 40, 0, 0, 45, 45, 60, 22},
};

} // namespace

int main()
{
    const HMODULE library = LoadLibraryW(L"torvapdm.dll");
    const auto drawTool = testing_support::drawToolEntry(library);
    if (!drawTool)
        return 1;
    int imageId = 0;
    for (const Tool& tool : tools) {
        drawTool(pictureWidth, pictureHeight, tool.kind, tool.diameter, tool.cornerRadius,
                 tool.tipAngle, tool.fluteLength, tool.shoulderLength, tool.overallLength,
                 tool.shankDiameter, imageId);
        std::printf("toolimage-%d.bmp|%u  %s|dia. %g, shank %g|flutes %g, length %g|"
                    "radius %g, angle %g\n",
                    imageId++, tool.kind, tool.name, tool.diameter, tool.shankDiameter,
                    tool.fluteLength, tool.overallLength, tool.cornerRadius, tool.tipAngle);
    }
    return 0;
}
