// The commit request: tells the Companion which file to take back. UI thread.
#pragma once

namespace torvapdm {

// Commits the open document under the current ZEM id: as a record in the request file of the
// Companion whose window is found, announced over the network, or else by starting the Companion
// with the commit. True when the request was delivered; a failure is shown to the user.
bool requestCommit();

} // namespace torvapdm
