// A cutting tool's dimensions, from what a caller asks to have drawn. Lengths are in the tool's own
// unit, angles in degrees. No platform header: these are decisions.
#pragma once

#include <cstdint>

namespace torvapdm {

// What DrawTool is called with, as it comes.
struct ToolArguments {
    std::uint32_t width; // of the picture, in pixels
    std::uint32_t height;
    std::uint32_t toolType; // the tool's kind, 1 to 14
    double diameter;
    double cornerRadius;
    double tipAngle;
    double fluteLength;
    double shoulderLength; // from the tip to the shoulder's upper end
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
    bool isPointed;         // ends in a cone, a drill's
    bool hasReversedCorner; // the corner is hollow
    double pointLength;     // 0 for a kind that is not pointed
    double totalLength;     // with the point
    double taper;           // by how much the flutes' upper end stands out, on either side
    double drawnWidth;
};

// The arguments with each unusable value replaced. Values that are no number stay; the tip angle
// alone becomes 0 then.
ToolArguments guardedArguments(ToolArguments arguments);

// Half the angle of a pointed kind's cone.
double halfAngleOfPoint(double tipAngle);

// The dimensions of the guarded arguments' kind. A kind that is not known ends flat.
ToolDimensions toolDimensions(const ToolArguments& guarded);

// True when every dimension is a finite number. Only such tools can be drawn.
bool areFinite(const ToolDimensions& dimensions);

} // namespace torvapdm
