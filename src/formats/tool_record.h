// The tool record: one line of the tool data file, which describes an operation, the copy of the
// tool in that operation, and the same tool as the host's tool manager returns it. No platform
// header.
//
// A record is "TOOLDATA" and then pairs of a key and its value, without a space between them:
//
//   TOOLDATA|DATAID=17|TPNAME=000002A1F3C05E40|CPNAME=...|DIA=10|TNUM=3|TTYPE=10|GEOFILE=...
//
// Integers are decimal; floating-point numbers are in printf's general format with 6 significant
// digits, independent of the locale (12, 0.5, 1e+06); a text handle is the text's address as 16
// upper-case hexadecimal digits.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace torvapdm {

// What a record is made from. Lengths are in the part's unit, angles in degrees. Pointers and views
// refer to the host's records, which own the texts.

struct Point {
    double x, y, z;
};

// The copy of its tool that an operation keeps.
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

struct ToolRecordValues {
    std::int32_t requestId;
    const wchar_t* toolPlaneName; // written as a handle, like geometry files and NC names
    const wchar_t* constructionPlaneName;
    OwnToolValues ownTool;
    FullToolValues fullTool;
    OperationValues operation;
    std::int32_t operationNumber; // the operation's position in the chain, from 1
    double cycleTime;             // seconds
};

// The record with its line feed; nothing when it has more than `longestToolRecord` characters.
std::optional<std::string> formatToolRecord(const ToolRecordValues& values);

} // namespace torvapdm
