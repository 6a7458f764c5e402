#include "outgoing/nc_queue.h"

#include "host/record_adapter.h"
#include "platform/owners.h"
#include "companion/installation.h"
#include "companion/line_sender.h"
#include "shared_state.h"
#include "formats/sorted_lines.h"
#include "platform/text.h"
#include "outgoing/posted_files.h"
#include "formats/nc_queue_file.h"
#include "outgoing/top_group.h"

namespace torvapdm {

namespace {

using Entries = std::vector<std::string>;

// Adds an entry for each NC file of the operation; false when its group is unknown.
bool addEntries(Entries& entries, const std::string& folder, TpGrpList& groups, const operation& op)
{
    TpGroup* const group = topGroup(groups, host::groupIdOf(op));
    if (!group)
        return false;
    const std::string program = toNarrowAnsi(programName(host::nciNameOf(op)));
    const std::string suffix = toNarrowAnsi(NCSuffix(nullptr).GetString());
    const std::string groupName = toNarrowAnsi(host::nameOf(*group));
    for (const std::string& file : filesMatching(folder + program + suffix))
        entries.push_back(queueEntry(folder, file, groupName));
    return true;
}

bool addEntriesOfChain(Entries& entries, const std::string& folder, TpGrpList& groups,
                       operation_node* first)
{
    for (operation_node* node = first; node; node = host::nextOf(*node)) {
        const operation m_op = host::operationOf(*node);
        if (!addEntries(entries, folder, groups, m_op))
            return false;
    }
    return true;
}

std::wstring queueFilePath()
{
    return getInstallationFolder() + L"\\temp\\ncqueue-" + std::to_wstring(currentRequestId) +
           L".txt";
}

void writeQueueFile(const std::wstring& path, const Entries& entries)
{
    FILE* file = nullptr;
    if (_wfopen_s(&file, path.c_str(), L"w") != 0 || !file)
        return;
    const FileStream queue(file);
    for (const std::string& entry : entries)
        std::fputs(queueLine(ncPathNumber, entry).c_str(), queue.get());
}

// Deliberate: allocated for every announcement, used by nothing and never released. One would
// expect no buffer; the host's memory grows by 2048 bytes with each queue.
void leaveBufferBehind()
{
    [[maybe_unused]] static char* volatile buffer;
    buffer = new char[2048];
}

void announce(const std::wstring& path)
{
    leaveBufferBehind();
    sendLine("IMPORTNCQUEUE|" + toNarrowAnsi(path));
}

} // namespace

int importNcQueue()
{
    const std::string folder = toNarrowAnsi(NCPrefix(nullptr).GetString());
    TpGrpList& groups = TpMainGrpMgr.GetMainGrpList();
    operation_node* first = nullptr;
    list_manager(1, L"", 0, &first);
    Entries entries;
    entries.reserve(host::lengthOf(first)); // one NC file an operation, as a rule
    if (!first || !addEntriesOfChain(entries, folder, groups, first))
        return 0;
    sortAndDropRepeats(entries);
    const std::wstring path = queueFilePath();
    writeQueueFile(path, entries);
    announce(path);
    return 0;
}

} // namespace torvapdm
