#include "formats/notices.h"

namespace torvapdm {

// Deliberate: nothing stands between the two words. One would expect a separator; the Companion
// looks for "MCAMXMLIMPORTDATAID=".
std::wstring setupSheetLine(std::int32_t requestId, const std::wstring& file)
{
    const std::wstring pre = L"MCAMXMLIMPORT";
    const std::wstring dataidpre = L"DATAID=";
    const std::wstring aid = std::to_wstring(requestId);
    const std::wstring dataidspc = L";";
    return pre + dataidpre + aid + dataidspc + file;
}

} // namespace torvapdm
