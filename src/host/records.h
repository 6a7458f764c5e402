// The host's operation, tool, group and plane records. Field names are ours where the host
// publishes none; code outside `record_adapter.h` names no field.
#pragma once

#include "framework/framework.h"

#include <cstdint>

// The leading part of a tool record, beginning with the tool number: exactly the 1024 bytes of
// which each operation keeps a copy of its own.
struct tp_tool_lead {
    std::int32_t toolNumber;
    std::int16_t toolType;
    std::int16_t numberOfFlutes;
    std::int16_t cornerRadiusType;
    std::int16_t toolMaterial;
    std::int32_t lengthOffsetNumber;
    std::int32_t diameterOffsetNumber;
    std::int32_t reserved;
    double diameter;
    double cornerRadius;
    double feedRate;
    wchar_t geometryFileName[260];
    wchar_t comment[200];
    std::uint8_t unused[1024 - 48 - 2 * 460];
};
static_assert(sizeof(tp_tool_lead) == 1024);

// A full tool record, as `tool_manager` fills it.
struct tp_tool {
    tp_tool_lead lead;
    double overallLength;
    double shoulderAngle;
    double additionalDiameter;
    double tipAngle;
    double pilotDiameter;
    double fluteLength;
    double shoulderLength;
    double shoulderDiameter;
    double arborDiameter;
    double holderDiameter;
    double holderLength;
    double plungeRate;
    double retractRate;
    std::int32_t station;
    std::int32_t slot;
    std::int32_t spindleSpeed;
    std::int32_t toolGroup;
    std::int32_t machineGroup;
    std::int32_t levelNumber;
    std::int16_t spindleRotation;
};

struct point3 {
    double x, y, z;
};

struct operation {
    std::int32_t operationId;
    std::int32_t groupId;
    std::int32_t holderNumber;
    std::int16_t operationType;
    std::int16_t compensationType;
    std::int16_t workOffsetNumber;
    std::int16_t toolPlaneId;
    std::int16_t constructionPlaneId;
    std::int16_t thirdPlaneId;
    double depth;
    point3 toolPlaneOrigin;
    point3 constructionPlaneOrigin;
    wchar_t ncName[260];
    wchar_t nciName[260];
    tp_tool_lead tool; // the operation's own copy
};

// One node of the host's operation chain; null ends it. Owned by the host.
struct operation_node {
    operation op;
    operation_node* next;
};

// An operation group. Owned by the host.
struct TpGroup {
    std::int32_t groupId;
    std::int32_t parentId;
    wchar_t name[260];
};

// An entity of the host's database, passed through unopened.
struct DB_LIST_ENT;

// Options of a file merge, passed as null.
struct FileMergeOptions;
