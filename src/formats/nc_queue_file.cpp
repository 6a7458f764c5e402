#include "formats/nc_queue_file.h"

namespace torvapdm {

// Deliberate: the dot is looked for in the whole name, folders included, and before the folders go.
// One would expect the file name's own dot; a name without one loses what stands behind a folder's.
std::wstring programName(const std::wstring& nciName)
{
    const std::wstring stem = nciName.substr(0, nciName.rfind(L'.'));
    return stem.substr(stem.find_last_of(L"/\\") + 1);
}

std::string queueEntry(const std::string& folder, const std::string& file,
                       const std::string& topGroup)
{
    return folder + file + '|' + topGroup;
}

std::string queueLine(std::int32_t ncPathNumber, const std::string& entry)
{
    return "NCPATH|" + std::to_string(ncPathNumber) + '|' + entry + '\n';
}

} // namespace torvapdm
