// The NC queue.
#include "bench/chains.h"
#include "bench/surroundings.h"
#include "host/record_adapter.h"
#include "support/add_in_state.h"
#include "control.h"
#include "outgoing/nc_queue.h"
#include "support/bytes.h"

#include <io.h>

namespace bench {

namespace {

constexpr double timeLimit = 1.2;

void searchBare(const std::string& pattern)
{
    _finddata64i32_t found;
    const intptr_t search = _findfirst64i32(pattern.c_str(), &found);
    if (search == -1)
        return;
    while (_findnext64i32(search, &found) == 0)
        ;
    _findclose(search);
}

// The same calls and file searches as for a queue.
void searchProgramsBare(const std::vector<std::string>& patterns)
{
    NCPrefix(nullptr);
    TpGrpList& groups = TpMainGrpMgr.GetMainGrpList();
    operation_node* chain = nullptr;
    list_manager(1, L"", 0, &chain);
    auto pattern = patterns.begin();
    for (operation_node* node = chain; node; node = host::nextOf(*node)) {
        const operation& op = host::operationOf(*node);
        for (TpGroup* group = groups.GroupByID(host::groupIdOf(op)); group;
             group = groups.GroupByID(host::parentIdOf(*group)))
            ;
        NCSuffix(nullptr);
        searchBare(*pattern++);
    }
}

// Writes the NC files of the chain into the folder and gives their search patterns.
std::vector<std::string> postPrograms(const std::wstring& folder, size_t operations)
{
    std::vector<std::string> patterns;
    for (size_t i = 1; i <= operations; ++i) {
        const std::wstring path = folder + L'P' + std::to_wstring(i) + L".NC";
        testing_support::writeBytes(path, "%\n");
        patterns.push_back(testing_support::toUtf8(path));
    }
    return patterns;
}

ChainFigures measure(ChainLength chain, const std::wstring& folder)
{
    const std::wstring file = installation().path(L"temp\\ncqueue-17.txt");
    putPart(chain.operations);
    const std::vector<std::string> patterns = postPrograms(folder, chain.operations);
    torvapdm::importNcQueue();
    const std::vector<std::string> lines = linesOfFile(file);
    require(lines.size() == chain.operations, "every program is queued");
    return measureChain(chain, torvapdm::importNcQueue, [&] {
        searchProgramsBare(patterns);
        writeLinesBare(file, lines);
        sendBare("IMPORTNCQUEUE|" + testing_support::toUtf8(file) + '\n');
    });
}

} // namespace

Rows ncQueueRows()
{
    const LineTaker taker;
    const std::wstring folder = installation().path(L"tmp\\");
    standin::setState("nc_prefix", folder);
    testing_support::AddInState::setRequestId(17);
    Growth growth;
    for (const ChainLength chain : chainLengths)
        growth.push_back(measure(chain, folder));
    return growthRows("NC queue", growth, timeLimit);
}

} // namespace bench
