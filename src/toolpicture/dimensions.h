// A cutting tool's dimensions, computed from the arguments of DrawTool. Lengths are in the tool's
// unit, angles in degrees. No platform header.
#pragma once

#include <cstdint>

namespace torvapdm {

// The arguments of DrawTool, unchecked.
struct ToolArguments {
    std::uint32_t width; // of the picture, in pixels
    std::uint32_t height;
    std::uint32_t toolType; // the tool's kind, 1 to 14
    double diameter;
    double cornerRadius;
    double tipAngle;
    double fluteLength;
    double shoulderLength; // from the tip to the upper end of the shoulder
    double overallLength;
    double shankDiameter;
};

// The tool as it is drawn.
struct ToolDimensions {
    double diameter;
    double radius; // of the corner; never negative, 0 for a pointed kind
    double angle;  // 0 to 90
    double fluteLength;
    double shoulderLength; // at least the flute length
    double overallLength;  // at least the shoulder length; without the point
    double shankDiameter;
    bool isPointed;         // ends in a cone, like a drill
    bool hasReversedCorner; // the corner is hollow
    double pointLength;     // 0 for a kind that is not pointed
    double totalLength;     // with the point
    double taper;           // how much wider the upper end of the flutes is, on each side
    double drawnWidth;
};

// The arguments with each unusable value replaced. NaN is kept, except for the tip angle, where it
// becomes 0.
ToolArguments guardedArguments(ToolArguments arguments);

// Half of the cone's angle for a pointed kind.
double halfAngleOfPoint(double tipAngle);

// The dimensions for the kind of the guarded arguments. An unknown kind has a flat end.
ToolDimensions toolDimensions(const ToolArguments& guarded);

// True when every dimension is finite.
bool areFinite(const ToolDimensions& dimensions);

} // namespace torvapdm
