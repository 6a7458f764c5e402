#include "incoming/command_dispatch.h"

#include "host/barriers.h"
#include "host/host.h"
#include "incoming/check_in.h"
#include "incoming/message_window.h"
#include "shared_state.h"

#include <utility>

namespace torvapdm {

namespace {

void startNewFile(const PreparedCommand& command)
{
    callHost([] { set_db_unchanged(); }); // so that the host does not ask to save the document
    callHost([&] { post_FT_command(command.hostModule, command.newFileCommand); });
}

} // namespace

PreparedCommand prepareCommand(const std::string& text)
{
    Command command = parseCommand(text);
    PreparedCommand prepared{command.kind, command.file.id, nullptr, L"Mastercam", L"OnFileNew"};
    prepared.openRequest = std::make_unique<CompanionFile>(std::move(command.file));
    return prepared;
}

void dispatchCommand(PreparedCommand command)
{
    switch (command.kind) {
    case Command::Kind::checkIn:
        checkInDocument([] { currentFilePath.clear(); });
        startNewFile(command);
        break;
    case Command::Kind::newFile:
        currentRequestId = command.requestId;
        startNewFile(command);
        break;
    case Command::Kind::open:
        currentRequestId = command.requestId;
        postOpenRequest(std::move(command.openRequest));
        break;
    case Command::Kind::malformed:
        break;
    }
}

} // namespace torvapdm
