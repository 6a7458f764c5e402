#include "outgoing/setup_sheet.h"

#include "host/host.h"
#include "companion/line_sender.h"
#include "shared_state.h"
#include "platform/text.h"
#include "formats/notices.h"

namespace torvapdm {

void sendSetupSheet()
{
    CStringArray Aarray;
    RunSetupSheetOnSelectedOpsWithoutUI(Aarray);
    if (Aarray.GetSize() == 0)
        return;
    // Deliberate: the first file alone. One would expect a line for each; the
    // Companion gets one sheet for each hand-over.
    const std::wstring text = setupSheetLine(currentRequestId, Aarray.GetAt(0).GetString());
    const std::string atext = toNarrow(text, CP_THREAD_ACP);
    sendLine(atext);
}

} // namespace torvapdm
