#include "outgoing/tool_export.h"

#include "host/record_adapter.h"
#include "host/barriers.h"
#include "platform/owners.h"
#include "host/host_exceptions.h"
#include "companion/installation.h"
#include "companion/line_sender.h"
#include "shared_state.h"
#include "formats/sorted_lines.h"
#include "platform/text.h"
#include "outgoing/plane_name.h"
#include "formats/tool_record.h"

namespace torvapdm {

namespace {

using Lines = std::vector<std::string>;

// The host's operation chain, handed back with its owner.
struct ChainReturner {
    void operator()(operation_node* oplist) const
    {
        atEdge(
            0,
            [&] {
                list_manager(1, L"", 1, &oplist);
                return 0;
            });
    }
};
using OperationChain = std::unique_ptr<operation_node, ChainReturner>;

// False when the host raised.
bool takeOperationChain(OperationChain& chain)
{
    operation_node* oplist = nullptr;
    const bool answered = callHost([&] { list_manager(1, L"", 0, &oplist); });
    chain.reset(oplist);
    return answered;
}

// The full tool of the operation as far as the host knows it: whether it does is not asked.
tp_tool fullToolOf(const operation& op)
{
    tp_tool tl = host::fullToolFor(op);
    DB_LIST_ENT* eptr = nullptr;
    bool succf = false;
    callHost([&] { tool_manager(&tl, 5, &eptr, &succf); });
    return tl;
}

double cycleTimeOf(operation& op)
{
    double seconds = 0;
    callHost([&] { seconds = CalcCycleTime(op, true); });
    return seconds;
}

// Deliberate: the name is formed for every operation and used by nothing. One would expect it in
// the record; no picture of that name is made in this release.
std::wstring toolAndHolderPicture(std::int32_t toolNumber)
{
    return getInstallationFolder() + L"\\tmp\\ToolAndHolder" + std::to_wstring(toolNumber) +
           L".bmp";
}

// Nothing for a plane that the host does not know and for a record that is too long.
//
// Deliberate: the plane names of every record are those of the part's first operation. One would
// expect the operation's own; the Companion takes the two values for marks, not for planes.
std::optional<std::string> recordOf(operation& op, std::int32_t number,
                                    const operation& firstOperation)
{
    const std::int32_t requestId = currentRequestId; // may change while the host works
    const std::optional<std::wstring> tPlaneName = getPlaneName(firstOperation, 1);
    const std::optional<std::wstring> cPlaneName = getPlaneName(firstOperation, 0);
    if (!tPlaneName || !cPlaneName)
        return std::nullopt;
    const tp_tool tl = fullToolOf(op);
    const host::OwnToolValues ownTool = host::ownToolOf(op);
    toolAndHolderPicture(ownTool.number);
    return toolRecord({.requestId = requestId,
                       .toolPlaneName = tPlaneName->c_str(),
                       .constructionPlaneName = cPlaneName->c_str(),
                       .ownTool = ownTool,
                       .fullTool = host::valuesOf(tl),
                       .operation = host::valuesOf(op),
                       .operationNumber = number,
                       .cycleTime = cycleTimeOf(op)});
}

// The record of each operation in the chain's order; nothing when one cannot be made.
std::optional<Lines> recordsOf(operation_node* oplist, const operation* firstOperation)
{
    Lines toolsList;
    toolsList.reserve(host::lengthOf(oplist)); // growing would hold the list twice for a moment
    std::int32_t number = 0;
    for (operation_node* node = oplist; node; node = host::nextOf(*node)) {
        std::optional<std::string> record;
        if (firstOperation)
            record = recordOf(host::operationOf(*node), ++number, *firstOperation);
        if (!record)
            return std::nullopt;
        toolsList.push_back(std::move(*record));
    }
    return toolsList;
}

std::wstring toolFilePath()
{
    return getInstallationFolder() + L"\\temp\\tool-" + std::to_wstring(currentRequestId) + L".txt";
}

bool writeToolFile(const std::string& sPath, const Lines& toolsList)
{
    const FileStream file(std::fopen(sPath.c_str(), "w"));
    if (!file)
        return false;
    for (const std::string& line : toolsList)
        std::fputs(line.c_str(), file.get());
    return true;
}

} // namespace

void exportToolData()
{
    // The request id is read for the file's name first, then for each record and for the line: it
    // is not the same everywhere when the listener thread takes a request meanwhile.
    const std::string sPath = toNarrowByRuntime(toolFilePath());
    const operation* const firstOperation = firstMainOperation();
    OperationChain oplist;
    if (!takeOperationChain(oplist))
        return;
    std::optional<Lines> toolsList = recordsOf(oplist.get(), firstOperation);
    oplist.reset();
    if (!toolsList)
        return;
    sortAndDropRepeats(*toolsList);
    if (writeToolFile(sPath, *toolsList))
        sendLine("TOOL-" + std::to_string(currentRequestId));
}

} // namespace torvapdm
