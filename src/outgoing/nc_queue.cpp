#include "outgoing/nc_queue.h"

#include "companion/installation.h"
#include "companion/line_sender.h"
#include "formats/nc_queue_file.h"
#include "formats/notices.h"
#include "formats/sorted_lines.h"
#include "host/record_adapter.h"
#include "platform/files.h"
#include "platform/narrow_text.h"
#include "shared_state.h"

#include <unordered_set>

namespace torvapdm {

namespace {

using Entries = std::vector<std::string>;

// The group with this id, or its topmost ancestor that the list knows, owned by the host; null when
// the list does not know the id. A cycle of parent ids ends the search.
TpGroup* findTopGroup(TpGrpList& groups, int groupId)
{
    TpGroup* group = nullptr;
    std::unordered_set<int> visited;
    for (int id = groupId; visited.insert(id).second; id = host::parentIdOf(*group)) {
        TpGroup* const known = groups.GroupByID(id);
        if (!known)
            break;
        group = known;
    }
    return group;
}

// Adds an entry for each NC file of the operation; false when its group is unknown.
bool addEntries(Entries& entries, const std::string& folder, TpGrpList& groups, const operation& op)
{
    TpGroup* const group = findTopGroup(groups, host::groupIdOf(op));
    if (!group)
        return false;
    const std::string program = toNarrowAnsi(programNameOf(host::nciNameOf(op)));
    const std::string suffix = toNarrowAnsi(NCSuffix(nullptr).GetString());
    const std::string groupName = toNarrowAnsi(host::nameOf(*group));
    for (const std::string& file : findFileNames(folder + program + suffix))
        entries.push_back(formatQueueEntry(folder, file, groupName));
    return true;
}

bool addEntriesOfChain(Entries& entries, const std::string& folder, TpGrpList& groups,
                       operation_node* first)
{
    for (operation_node* node = first; node; node = host::nextOf(*node)) {
        // A copy, since the calls for the entries may change the host's record.
        const operation copied = host::operationOf(*node);
        if (!addEntries(entries, folder, groups, copied))
            return false;
    }
    return true;
}

void writeQueueFile(const std::wstring& path, const Entries& entries)
{
    const OwnFile queue = openStream(path, L"w");
    if (!queue)
        return;
    for (const std::string& entry : entries)
        std::fputs(formatQueueLine(ncPathNumber, entry).c_str(), queue.get());
}

// Quirk Q58: 2048 bytes are allocated for each notice, and neither used nor freed.
void leakBuffer()
{
    [[maybe_unused]] static char* volatile buffer;
    buffer = new char[2048];
}

void announce(const std::wstring& path)
{
    leakBuffer();
    sendLine(formatNcQueueNotice(toNarrowAnsi(path)));
}

} // namespace

int importNcQueue()
{
    const std::string folder = toNarrowAnsi(NCPrefix(nullptr).GetString());
    TpGrpList& groups = TpMainGrpMgr.GetMainGrpList();
    operation_node* first = nullptr;
    list_manager(1, L"", 0, &first);
    Entries entries;
    entries.reserve(host::lengthOf(first)); // usually one NC file for each operation
    if (!first || !addEntriesOfChain(entries, folder, groups, first))
        return 0;
    sortAndRemoveDuplicates(entries);
    const std::wstring path = ncQueuePath(currentRequestId);
    writeQueueFile(path, entries);
    announce(path);
    return 0;
}

} // namespace torvapdm
