// What the add-in reads of the host's operation and tool records, without the host's own types. No
// platform header. Lengths are in the part's unit, angles in degrees. The texts stay the host's:
// pointers and views lead into the records.
#pragma once

#include <cstdint>
#include <string_view>

namespace host {

struct Point {
    double x, y, z;
};

// The operation's own copy of its tool.
struct OwnToolValues {
    double diameter;
    std::int32_t number;
    std::int16_t type;
    const wchar_t* geometryFile;
    double cornerRadius;
    std::int32_t lengthOffset;
    std::int32_t diameterOffset;
    std::int16_t flutes;
    std::int16_t cornerRadiusType;
    std::int16_t material;
    double feedRate;
    std::wstring_view comment;
};

// The full tool record.
struct FullToolValues {
    std::int32_t lengthOffset;
    double overallLength;
    std::int32_t station;
    std::int32_t slot;
    double shoulderAngle;
    double additionalDiameter;
    const wchar_t* geometryFile;
    double tipAngle;
    double pilotDiameter;
    double fluteLength;
    double shoulderLength;
    double shoulderDiameter;
    double arborDiameter;
    double holderDiameter;
    double holderLength;
    std::int32_t spindleSpeed;
    double feedRate;
    double plungeRate;
    double retractRate;
    std::int32_t toolGroup;
    std::int32_t machineGroup;
    std::int32_t levelNumber;
    std::int16_t spindleRotation;
};

struct OperationValues {
    const wchar_t* ncName;
    std::int32_t id;
    std::int16_t workOffset;
    std::int16_t type;
    std::int32_t holderNumber;
    std::int16_t compensationType;
    double depth;
    std::int16_t toolPlaneId;
    Point toolPlaneOrigin;
    std::int16_t constructionPlaneId;
    Point constructionPlaneOrigin;
};

} // namespace host
