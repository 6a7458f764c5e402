// The save that waits for the host's notification. UI thread.
#pragma once

namespace torvapdm {

// False while the host has not reported a save, and when the document's name has at most 3
// characters. Does not return otherwise.
bool saveIfNotified();

} // namespace torvapdm
