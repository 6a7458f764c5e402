// The tool data record, parsed by the Companion's code.
#include "formats/record_text.h"
#include "formats/tool_record.h"
#include "fuzz/target.h"
#include "peer/numbers.h"
#include "peer/tool_record.h"

#include <bit>
#include <cinttypes>
#include <cmath>
#include <cstdio>
#include <limits>

namespace fuzzing {

namespace {

// A value as the record shows it; an address has 16 digits.
template <class Value>
std::string textOf(Value value)
{
    if constexpr (std::is_floating_point_v<Value>) {
        return std::isnan(value) ? "nan" : peer::formatDecimal(value);
    } else if constexpr (std::is_signed_v<Value>) {
        return std::to_string(value);
    } else {
        char digits[17];
        std::snprintf(digits, sizeof digits, "%016" PRIX64, std::bit_cast<std::uint64_t>(value));
        return digits;
    }
}

// The low byte of each code unit, up to the first NUL.
std::string lowBytes(const std::wstring& text)
{
    std::string bytes;
    for (const wchar_t unit : text)
        bytes += static_cast<char>(unit & 0xFF);
    return bytes.c_str();
}

// Calls `use` with all values of the record except the comment, in field order.
template <class Use>
auto withValues(torvapdm::ToolRecordValues& record, Use use)
{
    torvapdm::OwnToolValues& own = record.ownTool;
    torvapdm::FullToolValues& full = record.fullTool;
    torvapdm::OperationValues& operation = record.operation;
    torvapdm::Point& tool = operation.toolPlaneOrigin;
    torvapdm::Point& construction = operation.constructionPlaneOrigin;
    return use(record.requestId, record.toolPlaneName, record.constructionPlaneName, own.diameter,
               own.number, own.type, own.geometryFile, own.cornerRadius, own.lengthOffset,
               own.diameterOffset, operation.ncName, own.flutes, operation.id, own.cornerRadiusType,
               own.material, own.feedRate, full.lengthOffset, full.overallLength, full.station,
               full.slot, full.shoulderAngle, full.additionalDiameter, full.geometryFile,
               record.operationNumber, full.tipAngle, full.pilotDiameter, full.fluteLength,
               full.shoulderLength, full.shoulderDiameter, full.arborDiameter, full.holderDiameter,
               full.holderLength, full.spindleSpeed, full.feedRate, full.plungeRate,
               full.retractRate, full.toolGroup, full.machineGroup, full.levelNumber,
               full.spindleRotation, operation.workOffset, operation.type, operation.holderNumber,
               operation.compensationType, operation.depth, operation.toolPlaneId, tool.x, tool.y,
               tool.z, operation.constructionPlaneId, construction.x, construction.y,
               construction.z, record.cycleTime);
}

template <class Use>
auto withValues(peer::ToolRecord& r, Use use)
{
    return use(r.dataId, r.toolPlaneName, r.constructionPlaneName, r.diameter, r.number, r.type,
               r.geometryFile, r.cornerRadius, r.lengthOffset, r.diameterOffset, r.ncName, r.flutes,
               r.operationId, r.cornerRadiusType, r.material, r.operationFeed, r.tableLengthOffset,
               r.overallLength, r.station, r.slot, r.shoulderAngle, r.additionalDiameter,
               r.tableGeometryFile, r.operationPlace, r.tipAngle, r.pilotDiameter, r.fluteLength,
               r.shoulderLength, r.shoulderDiameter, r.arborDiameter, r.holderDiameter,
               r.holderLength, r.spindleSpeed, r.feed, r.plungeRate, r.retractRate, r.group,
               r.machineGroup, r.level, r.spindleDirection, r.workOffset, r.operationType, r.holder,
               r.compensation, r.depth, r.toolPlane.plane, r.toolPlane.x, r.toolPlane.y,
               r.toolPlane.z, r.constructionPlane.plane, r.constructionPlane.x,
               r.constructionPlane.y, r.constructionPlane.z, r.seconds);
}

template <class Record>
std::vector<std::string> textsOf(Record& record)
{
    return withValues(
        record, [](const auto&... values) { return std::vector<std::string>{textOf(values)...}; });
}

// Input: all values of a record, the comment last.
void checkToolRecord(Input& input, Differences& differences)
{
    torvapdm::ToolRecordValues values{};
    withValues(values, [&](auto&... members) {
        ((members = input.number<std::remove_reference_t<decltype(members)>>()), ...);
    });
    const std::wstring comment = input.wideRest();
    const std::string written = lowBytes(comment);
    std::wstring wideBytes;
    for (const char byte : written)
        wideBytes += static_cast<wchar_t>(byte & 0xFF);
    const size_t uncommented = torvapdm::formatToolRecord(values).value_or("").size();
    values.ownTool.comment = comment;
    const auto record = torvapdm::formatToolRecord(values);
    const bool fits = uncommented + written.size() <= torvapdm::longestToolRecord;
    differences.compare("has a record without a comment", uncommented > 0, true);
    differences.compare("is written", record.has_value(), fits);
    if (!record)
        return;
    differences.compare("size", record->size(), uncommented + written.size());
    differences.compare("ends its line", record->ends_with('\n'), true);
    auto read = peer::parseToolRecord(record->substr(0, record->size() - 1));
    differences.compare("record is read", read ? "" : *record, "");
    if (!read)
        return;
    differences.compare("values", textsOf(*read), textsOf(values));
    differences.compare("comment", read->comment, wideBytes);
}

// A record in which all values differ, with this comment.
std::string someRecord(const std::string& comment)
{
    std::string bytes;
    for (int i = 0; i < 40 * 6 + 14 * 5; ++i)
        bytes += static_cast<char>(i * 37 + (i >> 2));
    return bytes + std::string(32, '\0') + comment;
}

} // namespace

std::vector<Target> recordTargets()
{
    using Double = std::numeric_limits<double>;
    return {{"tool_record",
             checkToolRecord,
             {someRecord("Drill 8.5 | steel"), std::string(400, '\0'), someRecord(""),
              std::string(400, '\xFF'), someRecord(std::string(900, 'c')),
              someRecord(std::string(1500, 'c')), someRecord("\1\1\xC4\n")},
             {raw(1e6), raw(-0.0001), raw(1e-5), raw(999999.5), raw(Double::infinity()),
              raw(-Double::infinity()), raw(Double::max()), raw(Double::min()),
              raw(Double::denorm_min()), "|", "\n", std::string(200, 'c')}}};
}

} // namespace fuzzing
