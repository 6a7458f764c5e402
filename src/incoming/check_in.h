// A check-in, from a command file or from a check-out answer.
#pragma once

namespace torvapdm {

// The steps that both have: sets the request id and the ZEM id to 0, calls `clearRest`, closes the
// document and posts WM_MOVE. Listener or UI thread.
void checkInDocument(void (*clearRest)());

} // namespace torvapdm
