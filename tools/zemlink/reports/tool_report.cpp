#include "tools/zemlink/reports/tool_report.h"

#include "peer/numbers.h"
#include "peer/text.h"

#include <cmath>

namespace zemlink {
namespace {

// As in the file, with six digits; a string where JSON has no such number.
Report decimal(double number)
{
    const std::string printed = peer::formatDecimal(number);
    return std::isfinite(number) ? Report::parse(printed) : Report(printed);
}

Report planeReport(const peer::PlanePlace& place)
{
    return {{"plane", place.plane},
            {"x", decimal(place.x)},
            {"y", decimal(place.y)},
            {"z", decimal(place.z)}};
}

Report shapeReport(const peer::ToolRecord& r)
{
    return {{"diameter", decimal(r.diameter)},
            {"additionalDiameter", decimal(r.additionalDiameter)},
            {"cornerRadius", decimal(r.cornerRadius)},
            {"cornerRadiusType", r.cornerRadiusType},
            {"tipAngle", decimal(r.tipAngle)},
            {"pilotDiameter", decimal(r.pilotDiameter)},
            {"flutes", r.flutes},
            {"fluteLength", decimal(r.fluteLength)},
            {"shoulderLength", decimal(r.shoulderLength)},
            {"shoulderDiameter", decimal(r.shoulderDiameter)},
            {"shoulderAngle", decimal(r.shoulderAngle)},
            {"overallLength", decimal(r.overallLength)},
            {"arborDiameter", decimal(r.arborDiameter)},
            {"holderDiameter", decimal(r.holderDiameter)},
            {"holderLength", decimal(r.holderLength)},
            {"material", r.material}};
}

Report tableReport(const peer::ToolRecord& r)
{
    return {{"station", r.station},
            {"slot", r.slot},
            {"lengthOffset", r.tableLengthOffset},
            {"spindleSpeed", r.spindleSpeed},
            {"spindleDirection", r.spindleDirection},
            {"feed", decimal(r.feed)},
            {"plungeRate", decimal(r.plungeRate)},
            {"retractRate", decimal(r.retractRate)}};
}

Report operationReport(const peer::ToolRecord& r)
{
    return {{"id", r.operationId},
            {"place", r.operationPlace},
            {"type", r.operationType},
            {"group", r.group},
            {"machineGroup", r.machineGroup},
            {"level", r.level},
            {"feed", decimal(r.operationFeed)},
            {"depth", decimal(r.depth)},
            {"workOffset", r.workOffset},
            {"holder", r.holder},
            {"compensation", r.compensation},
            {"toolPlane", planeReport(r.toolPlane)},
            {"constructionPlane", planeReport(r.constructionPlane)},
            {"seconds", decimal(r.seconds)}};
}

} // namespace

Report toolReport(const peer::ToolRecord& record)
{
    return {{"requestId", record.dataId},
            {"number", record.number},
            {"type", record.type},
            {"comment", peer::toUtf8(record.comment)},
            {"lengthOffset", record.lengthOffset},
            {"diameterOffset", record.diameterOffset},
            {"shape", shapeReport(record)},
            {"table", tableReport(record)},
            {"operation", operationReport(record)}};
}

} // namespace zemlink
