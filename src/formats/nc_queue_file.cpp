#include "formats/nc_queue_file.h"

namespace torvapdm {

// Quirk Q57: the dot is searched for in the whole name before the folders are removed, so a name
// without a dot of its own is cut at a folder's.
std::wstring programNameOf(const std::wstring& nciName)
{
    const std::wstring stem = nciName.substr(0, nciName.rfind(L'.'));
    return stem.substr(stem.find_last_of(L"/\\") + 1);
}

std::string formatQueueEntry(const std::string& folder, const std::string& file,
                             const std::string& topGroup)
{
    return folder + file + '|' + topGroup;
}

std::string formatQueueLine(std::int32_t ncPathNumber, const std::string& entry)
{
    return "NCPATH|" + std::to_string(ncPathNumber) + '|' + entry + '\n';
}

} // namespace torvapdm
