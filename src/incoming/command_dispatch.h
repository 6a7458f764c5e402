// Carries out the Companion's commands, on the listener's thread, and any check-in.
#pragma once

#include "formats/command_file.h"
#include "framework/framework.h"

#include <memory>
#include <string>

namespace torvapdm {

// A command with all that carrying it out allocates. The listener prepares it while the command is
// still in its file, so that a failed allocation leaves it there for the next cycle.
struct PreparedCommand {
    Command::Kind kind;
    std::int32_t requestId;
    std::unique_ptr<CompanionFile> openRequest;
    CString hostModule;
    CString newFileCommand;
};

// Prepares the content of a command file.
PreparedCommand prepareCommand(const std::string& text);

// The part of a check-in that is the same for a command file and a check-out answer: sets both ids
// to 0, calls `clearRest`, closes the document and posts WM_MOVE. Listener or UI thread.
void checkInDocument(void (*clearRest)());

// Carries out the command. A check-in closes the document, clears its identity and starts a new
// file; a new-file request starts a new file; an open request is stored and announced to the
// message window; a malformed command is dropped. An open or new-file request sets the current
// request id at once, before the host takes the file.
void dispatchCommand(PreparedCommand command);

} // namespace torvapdm
