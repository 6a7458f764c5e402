// The commit: reports a saved document to the Companion. UI thread.
#pragma once

namespace torvapdm {

// Commits the document under the current ZEM id: with a commit record and a notice when the
// Companion's window is found, else by starting the Companion with a commit command line. True when
// one of them succeeded; a failure shows a message box.
bool commitDocument();

} // namespace torvapdm
