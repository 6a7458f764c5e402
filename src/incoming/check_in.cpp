#include "incoming/check_in.h"

#include "host/barriers.h"
#include "host/host.h"
#include "incoming/message_window.h"
#include "shared_state.h"

namespace torvapdm {

void checkInDocument(void (*clearRest)())
{
    currentRequestId = 0;
    currentZemId = 0; // Quirk Q4: 0, which counts as known, and not `noZemId`.
    clearRest();
    callHost([] { m_fclose(nullptr, 0, nullptr); });
    postMoveMessage();
}

} // namespace torvapdm
