// The tool data export and the NC queue over long operation chains.
#include "bench/rows.h"
#include "bench/surroundings.h"
#include "host/record_adapter.h"
#include "link/shared_values.h"
#include "mastercam/control.h"
#include "ncqueue/nc_queue.h"
#include "support/bytes.h"
#include "tooldata/plane_name.h"
#include "tooldata/tool_export.h"

#include <cstdio>
#include <io.h>

namespace bench {

namespace {

constexpr size_t sizes[] = {100, 1000, 10000};

size_t roundsFor(size_t operations)
{
    return operations <= 1000 ? 21 : 7;
}

std::string sized(const char* what, size_t operations)
{
    return std::string(what) + ", " + std::to_string(operations) + " operations";
}

std::vector<std::string> linesOfFile(const std::wstring& path)
{
    std::vector<std::string> lines;
    std::string bytes = testing_support::readBytes(path).value_or("");
    for (size_t start = 0; start < bytes.size();) {
        const size_t end = bytes.find("\r\n", start);
        lines.push_back(bytes.substr(start, end - start) + '\n');
        start = end + 2;
    }
    return lines;
}

void writeLines(const std::wstring& path, const std::vector<std::string>& lines)
{
    FILE* const file = _wfopen(path.c_str(), L"w");
    for (const std::string& line : lines)
        std::fputs(line.c_str(), file);
    std::fclose(file);
}

// The host's operation chain, walked with the calls that an export makes for each operation.
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

// The same walk, questions and file searches as for a queue.
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

Row growthRow(const char* what, const std::vector<Pair>& pairs)
{
    const double small = pairs[1].ours.median / static_cast<double>(sizes[1]);
    const double large = pairs[2].ours.median / static_cast<double>(sizes[2]);
    return figureRow(std::string(what) + ", each of 10000 to each of 1000", "x",
                     {large / small, large / small, large / small}, pairs[2].rounds, 1.5);
}

void postPrograms(const std::wstring& folder, size_t operations)
{
    for (size_t i = 1; i <= operations; ++i)
        testing_support::writeBytes(folder + L"P" + std::to_wstring(i) + L".NC", "%\n");
}

std::vector<std::string> patternsIn(const std::wstring& folder, size_t operations)
{
    std::vector<std::string> patterns;
    for (size_t i = 1; i <= operations; ++i)
        patterns.push_back(testing_support::toUtf8(folder) + "P" + std::to_string(i) + ".NC");
    return patterns;
}

} // namespace

Rows toolExportRows()
{
    const LineTaker taker;
    const std::wstring file = installation().path(L"temp\\tool-17.txt");
    torvapdm::currentRequestId = 17;
    Rows rows;
    std::vector<Pair> pairs;
    for (const size_t operations : sizes) {
        putPart(operations);
        torvapdm::exportToolData();
        const std::vector<std::string> lines = linesOfFile(file);
        require(lines.size() == operations, "every operation has its record");
        const auto bare = [&] {
            walkToolsBare();
            writeLines(file, lines);
            sendBare("TOOL-17\n");
        };
        pairs.push_back(timeInPairs(roundsFor(operations), 1, torvapdm::exportToolData, bare));
        rows.push_back(ratioRow(sized("tool export", operations), pairs.back(), 2));
    }
    rows.push_back(growthRow("tool export", pairs));
    return rows;
}

Rows ncQueueRows()
{
    const LineTaker taker;
    const std::wstring file = installation().path(L"temp\\ncqueue-17.txt");
    const std::wstring folder = installation().path(L"tmp\\");
    standin::setState("nc_prefix", folder);
    torvapdm::currentRequestId = 17;
    Rows rows;
    std::vector<Pair> pairs;
    for (const size_t operations : sizes) {
        putPart(operations);
        postPrograms(folder, operations);
        torvapdm::importNcQueue();
        const std::vector<std::string> lines = linesOfFile(file);
        require(lines.size() == operations, "every program is queued");
        const std::vector<std::string> patterns = patternsIn(folder, operations);
        const auto bare = [&] {
            searchProgramsBare(patterns);
            writeLines(file, lines);
            sendBare("IMPORTNCQUEUE|" + testing_support::toUtf8(file) + '\n');
        };
        pairs.push_back(timeInPairs(roundsFor(operations), 1, torvapdm::importNcQueue, bare));
        rows.push_back(ratioRow(sized("NC queue", operations), pairs.back(), 1.2));
    }
    rows.push_back(growthRow("NC queue", pairs));
    return rows;
}

} // namespace bench
