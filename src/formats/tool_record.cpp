#include "formats/tool_record.h"

#include "formats/record_text.h"

namespace torvapdm {

namespace {

void putOwnTool(RecordText& text, const ToolRecordValues& values)
{
    const OwnToolValues& tool = values.ownTool;
    put(text, "|DIA=", tool.diameter);
    put(text, "|TNUM=", tool.number);
    put(text, "|TTYPE=", tool.type);
    put(text, "|GEOFILE=", tool.geometryFile);
    put(text, "|CRAD=", tool.cornerRadius);
    put(text, "|LOFF=", tool.lengthOffset);
    put(text, "|DOFF=", tool.diameterOffset);
    put(text, "|NCNAME=", values.operation.ncName);
    put(text, "|FLUTES=", tool.flutes);
    put(text, "|OPID=", values.operation.id);
    put(text, "|RADTYPE=", tool.cornerRadiusType);
    put(text, "|TLMATERIAL=", tool.material);
    put(text, "|OPFEED=", tool.feedRate);
}

// Quirk Q60: length offset, geometry file and feed rate are written a second time, from the full
// tool; the operation's copy can differ from it.
void putFullTool(RecordText& text, const FullToolValues& tool, std::int32_t operationNumber)
{
    put(text, "|LENGTHOFFSET=", tool.lengthOffset);
    put(text, "|LENGTH OVERALL=", tool.overallLength);
    put(text, "|STATION=", tool.station);
    put(text, "|SLOT=", tool.slot);
    put(text, "|ADSHLDRANGLE=", tool.shoulderAngle);
    put(text, "|ADDIAM=", tool.additionalDiameter);
    put(text, "|GEOFILE=", tool.geometryFile);
    put(text, "|OPERATION NUMBER=", operationNumber);
    put(text, "|TIPANGLE=", tool.tipAngle);
    put(text, "|PILOTDIA=", tool.pilotDiameter);
    put(text, "|FLUTELENGTH=", tool.fluteLength);
    put(text, "|SHLDRLENGTH=", tool.shoulderLength);
    put(text, "|SHLDRDIAM=", tool.shoulderDiameter);
    put(text, "|ARBORDIA=", tool.arborDiameter);
    put(text, "|HOLDERDIA=", tool.holderDiameter);
    put(text, "|HOLDERLENGTH=", tool.holderLength);
    put(text, "|RPM=", tool.spindleSpeed);
    put(text, "|FEED=", tool.feedRate);
    put(text, "|PLUNGE=", tool.plungeRate);
    put(text, "|RETRACT=", tool.retractRate);
    put(text, "|GROUP=", tool.toolGroup);
    put(text, "|MACHINEGROUP=", tool.machineGroup);
    put(text, "|LEVELNUMBER=", tool.levelNumber);
    put(text, "|SPINDLEROT=", tool.spindleRotation);
}

// Quirk Q61: the comment is written unescaped; a bar or a line break in it breaks the record.
void putComment(RecordText& text, std::wstring_view comment)
{
    put(text, "|COMMENT=");
    putLowBytes(text, comment);
}

void putOperation(RecordText& text, const OperationValues& operation)
{
    put(text, "|PLANEWOFF=", operation.workOffset);
    put(text, "|OPERATIONCOMMENT="); // never has a value
    put(text, "|OPERATIONTYPE=", operation.type);
    put(text, "|HOLDERNO=", operation.holderNumber);
    put(text, "|COMPENSATIONTYPE=", operation.compensationType);
    put(text, "|DEPTH=", operation.depth);
    put(text, "|TPTYPE=", operation.toolPlaneId);
    put(text, "|TPX=", operation.toolPlaneOrigin.x);
    put(text, "|TPY=", operation.toolPlaneOrigin.y);
    put(text, "|TPZ=", operation.toolPlaneOrigin.z);
    put(text, "|CPTYPE=", operation.constructionPlaneId);
    put(text, "|CPX=", operation.constructionPlaneOrigin.x);
    put(text, "|CPY=", operation.constructionPlaneOrigin.y);
    put(text, "|CPZ=", operation.constructionPlaneOrigin.z);
}

} // namespace

std::optional<std::string> formatToolRecord(const ToolRecordValues& values)
{
    RecordText text;
    put(text, "TOOLDATA");
    put(text, "|DATAID=", values.requestId);
    put(text, "|TPNAME=", values.toolPlaneName);
    put(text, "|CPNAME=", values.constructionPlaneName);
    putOwnTool(text, values);
    putFullTool(text, values.fullTool, values.operationNumber);
    putComment(text, values.ownTool.comment);
    putOperation(text, values.operation);
    put(text, "|OPTIME=", values.cycleTime);
    put(text, "\n");
    return contentOf(text);
}

} // namespace torvapdm
