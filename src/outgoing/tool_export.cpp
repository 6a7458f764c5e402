#include "outgoing/tool_export.h"

#include "companion/installation.h"
#include "companion/line_sender.h"
#include "formats/notices.h"
#include "formats/sorted_lines.h"
#include "formats/tool_record.h"
#include "host/barriers.h"
#include "host/record_adapter.h"
#include "platform/files.h"
#include "platform/narrow_text.h"
#include "shared_state.h"

namespace torvapdm {

namespace {

using Lines = std::vector<std::string>;

// ---- The host's operations and tools -----------------------------------------------------------

// The host's operation chain, returned to the host on destruction.
struct ChainReturner {
    void operator()(operation_node* chain) const
    {
        barrier(
            0,
            [&] {
                list_manager(1, L"", 1, &chain);
                return 0;
            });
    }
};
using OperationChain = std::unique_ptr<operation_node, ChainReturner>;

// False when the host raised.
bool takeOperationChain(OperationChain& chain)
{
    operation_node* first = nullptr;
    const bool isAnswered = callHost([&] { list_manager(1, L"", 0, &first); });
    chain.reset(first);
    return isAnswered;
}

// The operation's tool as the tool manager completes it. The result is not checked: a tool that the
// manager does not know keeps the operation's values, and the rest is zero.
tp_tool fullToolOf(const operation& op)
{
    tp_tool tool = host::fullToolFor(op);
    DB_LIST_ENT* entity = nullptr;
    bool succeeded = false;
    callHost([&] { tool_manager(&tool, 5, &entity, &succeeded); });
    return tool;
}

double cycleTimeOf(operation& op)
{
    return askHost(
        0.0, [&] { return CalcCycleTime(op, true); });
}

// ---- The records -------------------------------------------------------------------------------

// The record; nothing when the host does not know a plane or the record is too long.
//
// Quirk Q62: the plane names of every record are those of the part's first operation.
std::optional<std::string> recordOf(operation& op, std::int32_t number,
                                    const operation& firstOperation)
{
    const std::int32_t requestId = currentRequestId; // may change during the calls into the host
    const std::optional<std::wstring> toolPlane = getPlaneName(firstOperation, 1);
    const std::optional<std::wstring> constructionPlane = getPlaneName(firstOperation, 0);
    if (!toolPlane || !constructionPlane)
        return std::nullopt;
    const OwnToolValues ownTool = host::ownToolOf(op); // before the host is asked for the full tool
    const tp_tool fullTool = fullToolOf(op);
    toolAndHolderPicturePath(ownTool.number); // Quirk Q63: the result is not used.
    return formatToolRecord({.requestId = requestId,
                             .toolPlaneName = toolPlane->c_str(),
                             .constructionPlaneName = constructionPlane->c_str(),
                             .ownTool = ownTool,
                             .fullTool = host::valuesOf(fullTool),
                             .operation = host::valuesOf(op),
                             .operationNumber = number,
                             .cycleTime = cycleTimeOf(op)});
}

// The record of each operation in the chain's order; nothing when one cannot be formatted.
std::optional<Lines> recordsOf(operation_node* chain, const operation* firstOperation)
{
    Lines records;
    records.reserve(host::lengthOf(chain)); // growing would need twice the memory for a moment
    std::int32_t number = 0;
    for (operation_node* node = chain; node; node = host::nextOf(*node)) {
        std::optional<std::string> record;
        if (firstOperation)
            record = recordOf(host::operationOf(*node), ++number, *firstOperation);
        if (!record)
            return std::nullopt;
        records.push_back(std::move(*record));
    }
    return records;
}

bool writeToolDataFile(const std::string& path, const Lines& records)
{
    const OwnFile file(std::fopen(path.c_str(), "w"));
    if (!file)
        return false;
    for (const std::string& record : records)
        std::fputs(record.c_str(), file.get());
    return true;
}

} // namespace

operation* firstMainOperation()
{
    return askHost<operation*>(
        nullptr,
        [] {
            TpMemLookupList& list = TpMainOpMgr.GetMainOpList();
            const int size = list.GetSize();
            operation* first = nullptr;
            for (int index = 0; index < size && !first; ++index)
                first = list[index];
            return first;
        });
}

std::optional<std::wstring> getPlaneName(const operation& op, int selector)
{
    const int id = host::planeIdOf(op, selector);
    std::optional<std::wstring> emptyName(std::in_place);
    if (id == -1)
        return emptyName;
    return askHost(emptyName, [id]() -> std::optional<std::wstring> {
        PlaneBase* const plane = Planes.GetPlanePtrByID(id);
        if (!plane)
            return std::nullopt;
        return std::wstring(plane->GetName().GetString());
    });
}

void exportToolData()
{
    // The request id is read for the file's name first, then for each record and for the notice;
    // they differ when the listener receives a request in between.
    const std::string path = toNarrowByRuntime(toolDataPath(currentRequestId));
    const operation* const firstOperation = firstMainOperation();
    OperationChain chain;
    if (!takeOperationChain(chain))
        return;
    std::optional<Lines> records = recordsOf(chain.get(), firstOperation);
    chain.reset();
    if (!records)
        return;
    sortAndRemoveDuplicates(*records);
    if (writeToolDataFile(path, *records))
        sendLine(formatToolDataNotice(currentRequestId));
}

} // namespace torvapdm
