// The tool data export.
#include "bench/chains.h"
#include "bench/surroundings.h"
#include "host/record_adapter.h"
#include "support/add_in_state.h"
#include "outgoing/tool_export.h"

namespace bench {

namespace {

constexpr double timeLimit = 1.5;

// The calls that an export makes for each operation of the host's chain.
void walkToolsBare()
{
    operation* const first = torvapdm::firstMainOperation();
    operation_node* chain = nullptr;
    list_manager(1, L"", 0, &chain);
    for (operation_node* node = chain; node; node = host::nextOf(*node)) {
        for (const int selector : {1, 0})
            Planes.GetPlanePtrByID(host::planeIdOf(*first, selector))->GetName();
        operation& op = host::operationOf(*node);
        tp_tool tool = host::fullToolFor(op);
        DB_LIST_ENT* entity = nullptr;
        bool succeeded = false;
        tool_manager(&tool, 5, &entity, &succeeded);
        CalcCycleTime(op, true);
    }
    list_manager(1, L"", 1, &chain);
}

ChainFigures measure(ChainLength chain)
{
    const std::wstring file = installation().path(L"temp\\tool-17.txt");
    putPart(chain.operations);
    torvapdm::exportToolData();
    const std::vector<std::string> lines = linesOfFile(file);
    require(lines.size() == chain.operations, "every operation has its record");
    return measureChain(chain, torvapdm::exportToolData, [&] {
        walkToolsBare();
        writeLinesBare(file, lines);
        sendBare("TOOL-17\n");
    });
}

} // namespace

Rows toolExportRows()
{
    const LineTaker taker;
    testing_support::AddInState::setRequestId(17);
    Growth growth;
    for (const ChainLength chain : chainLengths)
        growth.push_back(measure(chain));
    return growthRows("tool export", growth, timeLimit);
}

} // namespace bench
