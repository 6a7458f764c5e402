// The add-in's reactions to the host's document events. UI thread.
#pragma once

namespace torvapdm {

// Reacts to the event with this code; unknown codes are ignored. Gives 0.
int reactToHostEvent(int code);

} // namespace torvapdm
