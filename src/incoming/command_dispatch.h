// Carries out the Companion's requests, on the listener's thread.
#pragma once

#include <string>

namespace torvapdm {

// Carries out what the command file held. A check-in closes the host's document, forgets its
// identity and starts a new file; a new-file request starts a new file; an open request is parked
// for the message window; a malformed one is dropped.
void carryOutCommandText(const std::string& text);

} // namespace torvapdm
