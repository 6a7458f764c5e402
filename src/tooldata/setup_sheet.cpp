#include "tooldata/setup_sheet.h"

#include "host/host.h"
#include "link/line_sender.h"
#include "link/shared_values.h"
#include "link/text.h"

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

void sendSetupSheet()
{
    CStringArray Aarray;
    RunSetupSheetOnSelectedOpsWithoutUI(Aarray);
    if (Aarray.GetSize() == 0)
        return;
    // Deliberate: the first file alone. One would expect a line for each; the Companion takes one
    // sheet for a request.
    const std::wstring text = setupSheetLine(currentRequestId, Aarray.GetAt(0).GetString());
    const std::string atext = toNarrow(text, CP_THREAD_ACP);
    sendLine(atext);
}

} // namespace torvapdm
