// The reactions to the host's document events. UI thread.
#pragma once

namespace torvapdm {

// Quirk Q55: nothing sets it, so event 4 never sets `captureOnClosePending` and event 5 never takes
// a screen picture.
inline bool captureOnCloseEnabled = false;

// Reacts to the event with this code, and ignores an unknown code. Returns 0.
int reactToHostEvent(int code);

} // namespace torvapdm
