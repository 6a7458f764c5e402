#include "core/editing.h"

#include "core/document.h"
#include "core/operation_types.h"

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

// How well a finishing contour can follow this operation: 2 for a contour with an end mill, 1 for
// any other path, 0 for holes.
int rankForFinishing(const operation& op)
{
    const int type = op.operationType;
    if (type == drilling || type == tapping || type == boring)
        return 0;
    constexpr int ballMill = 1, flatMill = 3; // of the types of end mills
    const bool isEndMill = op.tool.toolType >= ballMill && op.tool.toolType <= flatMill;
    return type == contour && isEndMill ? 2 : 1;
}

// The last of the operations with the highest rank; null if there are only holes.
const PartOperation* operationToFinish(const Part& part)
{
    const PartOperation* found = nullptr;
    int best = 1;
    for (const PartOperation& held : part.operations) {
        const int rank = rankForFinishing(held.node.op);
        if (rank >= best) {
            best = rank;
            found = &held;
        }
    }
    return found;
}

PartOperation finishingPass(const Part& part, const PartOperation& finished)
{
    PartOperation pass = finished;
    pass.node.op.operationType = contour;
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

std::optional<int> addFinishingPass()
{
    const std::shared_ptr<Part> part = openPart();
    const PartOperation* const finished = operationToFinish(*part);
    if (!finished)
        return std::nullopt;
    append(*part, finishingPass(*part, *finished));
    setHostSetting(&HostSettings::databaseChanged, true);
    return part->operations.back().node.op.operationId;
}

} // namespace standin
