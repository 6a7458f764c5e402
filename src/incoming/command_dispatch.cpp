#include "incoming/command_dispatch.h"

#include "host/host.h"
#include "formats/command_file.h"
#include "host/host_exceptions.h"
#include "incoming/pending_request.h"
#include "shared_state.h"
#include "incoming/window_posts.h"

namespace torvapdm {

namespace {

void startNewFile()
{
    callHost([] { set_db_unchanged(); }); // so that the host does not ask to save what is open
    callHost([] { post_FT_command(CString(L"Mastercam"), CString(L"OnFileNew")); });
}

void checkIn()
{
    currentRequestId = 0;
    // Deliberate: 0, not `noZemId`. One would expect "none"; flows that ask whether a file of the
    // Companion is known rely on seeing one after a check-in.
    currentZemId = 0;
    currentFilePath.clear();
    callHost([] { m_fclose(nullptr, 0, nullptr); });
    wakeMessageWindow();
    startNewFile();
}

} // namespace

void carryOutCommandText(const std::string& text)
{
    const CommandRequest request = interpretCommandText(text);
    switch (request.kind) {
    case CommandRequest::Kind::checkIn:
        checkIn();
        break;
    case CommandRequest::Kind::newFile:
        currentRequestId = request.id;
        startNewFile();
        break;
    case CommandRequest::Kind::open:
        currentRequestId = request.id;
        parkOpenRequest(request.id, request.path);
        break;
    case CommandRequest::Kind::malformed:
        break;
    }
}

} // namespace torvapdm
