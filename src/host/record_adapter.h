// The host's records as the add-in reads them: the only place that names their fields. Adapting the
// add-in to another release of the host's development kit means editing this file and `adapter.h`.
#pragma once

#include "host/host.h"
#include "formats/tool_record.h"

#include <cstddef>
#include <cstring>
#include <string>

namespace host {

// The text of a field up to its null terminator, or the whole field when it has none.
template <size_t capacity>
std::wstring_view textOf(const wchar_t (&field)[capacity])
{
    const std::wstring_view whole(field, capacity);
    return whole.substr(0, whole.find(L'\0'));
}

// ---- The operation chain -----------------------------------------------------------------------

inline operation& operationOf(operation_node& node)
{
    return node.op;
}

inline operation_node* nextOf(const operation_node& node)
{
    return node.next;
}

// The number of operations in the chain.
inline size_t lengthOf(const operation_node* chain)
{
    size_t length = 0;
    for (const operation_node* node = chain; node; node = nextOf(*node))
        ++length;
    return length;
}

// ---- Operations --------------------------------------------------------------------------------

inline int groupIdOf(const operation& op)
{
    return op.groupId;
}

inline std::wstring nciNameOf(const operation& op)
{
    return std::wstring(textOf(op.nciName));
}

// The plane's id by selector: 0 the construction plane, 1 the tool plane, 3 a third plane; any
// other selector returns -1, the id of no plane.
inline int planeIdOf(const operation& op, int selector)
{
    switch (selector) {
    case 0:
        return op.constructionPlaneId;
    case 1:
        return op.toolPlaneId;
    case 3:
        return op.thirdPlaneId;
    default:
        return -1;
    }
}

inline torvapdm::Point pointOf(const point3& point)
{
    return {point.x, point.y, point.z};
}

inline torvapdm::OperationValues valuesOf(const operation& op)
{
    return {.ncName = op.ncName,
            .id = op.operationId,
            .workOffset = op.workOffsetNumber,
            .type = op.operationType,
            .holderNumber = op.holderNumber,
            .compensationType = op.compensationType,
            .depth = op.depth,
            .toolPlaneId = op.toolPlaneId,
            .toolPlaneOrigin = pointOf(op.toolPlaneOrigin),
            .constructionPlaneId = op.constructionPlaneId,
            .constructionPlaneOrigin = pointOf(op.constructionPlaneOrigin)};
}

// ---- Tools -------------------------------------------------------------------------------------

inline torvapdm::OwnToolValues ownToolOf(const operation& op)
{
    const tp_tool_lead& tool = op.tool;
    return {.diameter = tool.diameter,
            .number = tool.toolNumber,
            .type = tool.toolType,
            .geometryFile = tool.geometryFileName,
            .cornerRadius = tool.cornerRadius,
            .lengthOffset = tool.lengthOffsetNumber,
            .diameterOffset = tool.diameterOffsetNumber,
            .flutes = tool.numberOfFlutes,
            .cornerRadiusType = tool.cornerRadiusType,
            .material = tool.toolMaterial,
            .feedRate = tool.feedRate,
            .comment = textOf(tool.comment)};
}

// The full tool record that the tool manager is to fill: the operation's copy of the tool, which
// holds the tool number, followed by zero bytes.
inline tp_tool fullToolFor(const operation& op)
{
    tp_tool tool{};
    static_assert(sizeof op.tool == 1024);
    std::memcpy(&tool, &op.tool, sizeof op.tool);
    return tool;
}

inline torvapdm::FullToolValues valuesOf(const tp_tool& tool)
{
    return {.lengthOffset = tool.lead.lengthOffsetNumber,
            .overallLength = tool.overallLength,
            .station = tool.station,
            .slot = tool.slot,
            .shoulderAngle = tool.shoulderAngle,
            .additionalDiameter = tool.additionalDiameter,
            .geometryFile = tool.lead.geometryFileName,
            .tipAngle = tool.tipAngle,
            .pilotDiameter = tool.pilotDiameter,
            .fluteLength = tool.fluteLength,
            .shoulderLength = tool.shoulderLength,
            .shoulderDiameter = tool.shoulderDiameter,
            .arborDiameter = tool.arborDiameter,
            .holderDiameter = tool.holderDiameter,
            .holderLength = tool.holderLength,
            .spindleSpeed = tool.spindleSpeed,
            .feedRate = tool.lead.feedRate,
            .plungeRate = tool.plungeRate,
            .retractRate = tool.retractRate,
            .toolGroup = tool.toolGroup,
            .machineGroup = tool.machineGroup,
            .levelNumber = tool.levelNumber,
            .spindleRotation = tool.spindleRotation};
}

// ---- Groups ------------------------------------------------------------------------------------

inline int parentIdOf(const TpGroup& group)
{
    return group.parentId;
}

inline std::wstring nameOf(const TpGroup& group)
{
    return std::wstring(textOf(group.name));
}

} // namespace host
