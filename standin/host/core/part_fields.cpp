#include "core/part_fields.h"

namespace standin {

Fields<Part> partFields()
{
    static const Field<Part> fields[] = {
        {"title", &Part::title},
        {"material", &Part::material},
        {"remark", &Part::remark},
    };
    return fields;
}

Fields<Plane> planeFields()
{
    static const Field<Plane> fields[] = {
        {"id", &Plane::id},
        {"name", &Plane::name},
    };
    return fields;
}

Fields<TpGroup> groupFields()
{
    static const Field<TpGroup> fields[] = {
        {"id", &TpGroup::groupId},
        {"parent", &TpGroup::parentId},
        {"name", &TpGroup::name},
    };
    return fields;
}

Fields<tp_tool_lead> toolLeadFields()
{
    static const Field<tp_tool_lead> fields[] = {
        {"number", &tp_tool_lead::toolNumber},
        {"type", &tp_tool_lead::toolType},
        {"flutes", &tp_tool_lead::numberOfFlutes},
        {"corner-radius-type", &tp_tool_lead::cornerRadiusType},
        {"material", &tp_tool_lead::toolMaterial},
        {"length-offset", &tp_tool_lead::lengthOffsetNumber},
        {"diameter-offset", &tp_tool_lead::diameterOffsetNumber},
        {"diameter", &tp_tool_lead::diameter},
        {"corner-radius", &tp_tool_lead::cornerRadius},
        {"feed-rate", &tp_tool_lead::feedRate},
        {"geometry-file", &tp_tool_lead::geometryFileName},
        {"comment", &tp_tool_lead::comment},
    };
    return fields;
}

Fields<tp_tool> toolRestFields()
{
    static const Field<tp_tool> fields[] = {
        {"overall-length", &tp_tool::overallLength},
        {"shoulder-angle", &tp_tool::shoulderAngle},
        {"additional-diameter", &tp_tool::additionalDiameter},
        {"tip-angle", &tp_tool::tipAngle},
        {"pilot-diameter", &tp_tool::pilotDiameter},
        {"flute-length", &tp_tool::fluteLength},
        {"shoulder-length", &tp_tool::shoulderLength},
        {"shoulder-diameter", &tp_tool::shoulderDiameter},
        {"arbor-diameter", &tp_tool::arborDiameter},
        {"holder-diameter", &tp_tool::holderDiameter},
        {"holder-length", &tp_tool::holderLength},
        {"plunge-rate", &tp_tool::plungeRate},
        {"retract-rate", &tp_tool::retractRate},
        {"station", &tp_tool::station},
        {"slot", &tp_tool::slot},
        {"spindle-speed", &tp_tool::spindleSpeed},
        {"tool-group", &tp_tool::toolGroup},
        {"machine-group", &tp_tool::machineGroup},
        {"level", &tp_tool::levelNumber},
        {"spindle-rotation", &tp_tool::spindleRotation},
    };
    return fields;
}

Fields<operation> operationFields()
{
    static const Field<operation> fields[] = {
        {"id", &operation::operationId},
        {"group", &operation::groupId},
        {"holder", &operation::holderNumber},
        {"type", &operation::operationType},
        {"compensation", &operation::compensationType},
        {"work-offset", &operation::workOffsetNumber},
        {"tool-plane", &operation::toolPlaneId},
        {"construction-plane", &operation::constructionPlaneId},
        {"third-plane", &operation::thirdPlaneId},
        {"depth", &operation::depth},
        {"tool-plane-origin", &operation::toolPlaneOrigin},
        {"construction-plane-origin", &operation::constructionPlaneOrigin},
        {"nc-name", &operation::ncName},
        {"nci-name", &operation::nciName},
    };
    return fields;
}

Fields<PartOperation> operationRestFields()
{
    static const Field<PartOperation> fields[] = {
        {"cycle-time", &PartOperation::cycleSeconds},
    };
    return fields;
}

} // namespace standin
