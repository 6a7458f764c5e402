// Carries out the Companion's commands. Listener thread.
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

// Carries out the command. A check-in closes the document, clears its identity and starts a new
// file; a new-file request starts a new file; an open request is stored and announced to the
// message window; a malformed command is dropped. An open or new-file request sets the current
// request id at once, before the host takes the file.
void dispatchCommand(PreparedCommand command);

} // namespace torvapdm
