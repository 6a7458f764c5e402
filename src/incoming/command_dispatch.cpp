#include "incoming/command_dispatch.h"

#include "formats/command_file.h"
#include "host/barriers.h"
#include "host/host.h"
#include "incoming/message_window.h"
#include "shared_state.h"

namespace torvapdm {

namespace {

void startNewFile()
{
    callHost([] { set_db_unchanged(); }); // so that the host does not ask to save the document
    callHost([] { post_FT_command(CString(L"Mastercam"), CString(L"OnFileNew")); });
}

void checkIn()
{
    currentRequestId = 0;
    currentZemId = 0; // Quirk Q4: 0, which counts as known, and not `noZemId`.
    currentFilePath.clear();
    callHost([] { m_fclose(nullptr, 0, nullptr); });
    postWakeUpMessage();
    startNewFile();
}

} // namespace

void dispatchCommand(const std::string& text)
{
    const Command command = parseCommand(text);
    switch (command.kind) {
    case Command::Kind::checkIn:
        checkIn();
        break;
    case Command::Kind::newFile:
        currentRequestId = command.file.id;
        startNewFile();
        break;
    case Command::Kind::open:
        currentRequestId = command.file.id;
        postOpenRequest(command.file);
        break;
    case Command::Kind::malformed:
        break;
    }
}

} // namespace torvapdm
