#include "formats/notices.h"

#include "formats/decimal.h"

namespace torvapdm {

std::string formatCommitNotice(std::uint32_t zemId, const std::string& file)
{
    return "ZEMID=" + std::to_string(zemId) + '|' + file;
}

std::string formatToolDataNotice(std::int32_t requestId)
{
    return "TOOL-" + std::to_string(requestId);
}

std::string formatNcQueueNotice(const std::string& queueFile)
{
    return "IMPORTNCQUEUE|" + queueFile;
}

// Quirk Q22: there is no separator between the first two words.
std::wstring formatSetupSheetNotice(std::int32_t requestId, const std::wstring& sheet)
{
    return L"MCAMXMLIMPORT"
           L"DATAID=" +
           formatDecimal(requestId) + L';' + sheet;
}

} // namespace torvapdm
