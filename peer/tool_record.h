// The tool data file, `temp\tool-<request id>.txt`: 8-bit text, one record a line, each line ended
// by CR LF. A record is the word TOOLDATA and then each of its pairs once, in this order:
//
//   TOOLDATA|DATAID=17|TPNAME=000002A1F3C05E40|CPNAME=000002A1F3C05E80|DIA=12.5|TNUM=4|…|OPTIME=61.5
//
// Integers are decimal. Numbers with a fraction have six significant digits (12, 0.5, 1e+06, inf,
// nan). Five pairs hold addresses instead of texts: 16 upper-case hexadecimal digits, different in
// each run. The comment is Latin-1 and may contain `|` and `=`: it ends before the last
// `|PLANEWOFF=`.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace peer {

struct PlanePlace {
    std::int16_t plane = 0; // id of the plane
    double x = 0, y = 0, z = 0;
};

// An operation and its tool, in the order of the pairs. Lengths are in the units of the part.
struct ToolRecord {
    std::int32_t dataId = 0;                                    // request id
    std::uint64_t toolPlaneName = 0, constructionPlaneName = 0; // addresses
    double diameter = 0;
    std::int32_t number = 0;
    std::int16_t type = 0;
    std::uint64_t geometryFile = 0; // address
    double cornerRadius = 0;
    std::int32_t lengthOffset = 0, diameterOffset = 0; // numbers of offset registers
    std::uint64_t ncName = 0;                          // address
    std::int16_t flutes = 0;
    std::int32_t operationId = 0;
    std::int16_t cornerRadiusType = 0, material = 0;
    double operationFeed = 0;

    // From the host's tool table.
    std::int32_t tableLengthOffset = 0;
    double overallLength = 0;
    std::int32_t station = 0, slot = 0;
    double shoulderAngle = 0, additionalDiameter = 0;
    std::uint64_t tableGeometryFile = 0; // address
    std::int32_t operationPlace = 0;     // its position in the part, from 1
    double tipAngle = 0, pilotDiameter = 0, fluteLength = 0, shoulderLength = 0;
    double shoulderDiameter = 0, arborDiameter = 0, holderDiameter = 0, holderLength = 0;
    std::int32_t spindleSpeed = 0;
    double feed = 0, plungeRate = 0, retractRate = 0;
    std::int32_t group = 0, machineGroup = 0, level = 0;
    std::int16_t spindleDirection = 0;
    std::wstring comment{};

    // The operation.
    std::int16_t workOffset = 0;
    std::int16_t operationType = 0; // after a comment that is always empty
    std::int32_t holder = 0;
    std::int16_t compensation = 0;
    double depth = 0;
    PlanePlace toolPlane{}, constructionPlane{};
    double seconds = 0; // cycle time
};

// Empty when the line, without its end, is not exactly such a record.
std::optional<ToolRecord> parseToolRecord(std::string_view line);

// One for each line of the file; empty for a line that is not a record.
std::vector<std::optional<ToolRecord>> parseToolData(std::string_view bytes);

} // namespace peer
