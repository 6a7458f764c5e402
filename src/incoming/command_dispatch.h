// Carries out the Companion's commands, on the listener's thread.
#pragma once

#include <string>

namespace torvapdm {

// Carries out the content of a command file. A check-in closes the document, clears its identity
// and starts a new file; a new-file request starts a new file; an open request is stored and
// announced to the message window; a malformed command is dropped. An open or new-file request sets
// the current request id at once, before the host takes the file.
void dispatchCommand(const std::string& text);

} // namespace torvapdm
