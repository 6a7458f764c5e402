#include "core/part.h"

namespace standin {

namespace {

void linkChain(Part& part)
{
    operation_node* previous = nullptr;
    for (PartOperation& held : part.operations) {
        if (previous)
            previous->next = &held.node;
        previous = &held.node;
    }
}

} // namespace

operation defaultOperation()
{
    operation op{};
    op.toolPlaneId = -1;
    op.constructionPlaneId = -1;
    op.thirdPlaneId = -1;
    return op;
}

void linkPart(Part& part)
{
    linkChain(part);
    for (Plane& plane : part.planes)
        part.planeById.emplace(plane.id, &plane);
    for (TpGroup& group : part.groups)
        part.groupById.emplace(group.groupId, &group);
    for (tp_tool& tool : part.tools)
        part.toolByNumber.emplace(tool.lead.toolNumber, &tool);
    for (PartOperation& held : part.operations) {
        part.operationById.emplace(held.node.op.operationId, &held);
        part.operationByRecord.emplace(&held.node.op, &held);
    }
}

bool isEmpty(const Part& part)
{
    return part.title.empty() && part.material.empty() && part.remark.empty() &&
           part.shapes.empty() && part.planes.empty() && part.groups.empty() &&
           part.tools.empty() && part.operationList.empty();
}

} // namespace standin
