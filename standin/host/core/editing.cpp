#include "core/editing.h"

#include "core/document.h"

#include <algorithm>

namespace standin {

namespace {

constexpr double deeper = 0.5;     // millimetres
constexpr double passScale = 0.85; // scale of the path

int nextId(const Part& part)
{
    int id = 0;
    for (const PartOperation& held : part.operations)
        id = std::max(id, held.node.op.operationId);
    return id + 1;
}

ViewPoint middleOf(const std::vector<ViewPoint>& path)
{
    const auto [left, right] = std::minmax_element(
        path.begin(), path.end(), [](auto& one, auto& other) { return one.x < other.x; });
    const auto [low, high] = std::minmax_element(
        path.begin(), path.end(), [](auto& one, auto& other) { return one.y < other.y; });
    return {(left->x + right->x) / 2, (low->y + high->y) / 2};
}

void scaleToMiddle(std::vector<ViewPoint>& path)
{
    const ViewPoint middle = middleOf(path);
    for (ViewPoint& point : path) {
        point.x = middle.x + (point.x - middle.x) * passScale;
        point.y = middle.y + (point.y - middle.y) * passScale;
    }
}

PartOperation finishingPass(const Part& part)
{
    PartOperation pass = part.operations.back();
    pass.node.next = nullptr;
    pass.node.op.operationId = nextId(part);
    pass.node.op.depth -= deeper;
    for (std::vector<ViewPoint>& path : pass.paths)
        scaleToMiddle(path);
    return pass;
}

// Existing records keep their addresses.
void append(Part& part, PartOperation pass)
{
    PartOperation& previous = part.operations.back();
    PartOperation& added = part.operations.emplace_back(std::move(pass));
    previous.node.next = &added.node;
    part.operationList.push_back(&added);
    part.operationById.emplace(added.node.op.operationId, &added);
    part.operationByRecord.emplace(&added.node.op, &added);
}

} // namespace

bool addFinishingPass()
{
    const std::shared_ptr<Part> part = openPart();
    if (part->operations.empty())
        return false;
    append(*part, finishingPass(*part));
    setHostSetting(&HostSettings::databaseChanged, true);
    return true;
}

} // namespace standin
