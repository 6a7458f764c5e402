#include "outgoing/setup_sheet.h"

#include "companion/line_sender.h"
#include "formats/notices.h"
#include "host/host.h"
#include "platform/narrow_text.h"
#include "shared_state.h"

namespace torvapdm {

void sendSetupSheet()
{
    CStringArray producedFiles;
    RunSetupSheetOnSelectedOpsWithoutUI(producedFiles);
    if (producedFiles.GetSize() == 0)
        return;
    // Quirk Q22: the other files are ignored.
    const std::wstring firstFile = producedFiles.GetAt(0).GetString();
    sendLine(toNarrow(formatSetupSheetNotice(currentRequestId, firstFile), CP_THREAD_ACP));
}

} // namespace torvapdm
