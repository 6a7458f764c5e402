#include "outgoing/untitled_document.h"

#include "host/document.h"
#include "host/adapter.h"
#include "host/host_application.h"
#include "host/host_exceptions.h"
#include "host/message_box.h"
#include "shared_state.h"
#include "platform/text.h"

namespace torvapdm {

namespace {

// The host's own command that saves the document and asks for a name.
constexpr WPARAM hostSaveCommand = 41111;

bool isDocumentUntitled()
{
    return saveNotified && hostFileName().size() < 3;
}

// A host that raises while it processes a message is taken for one that is quitting: it would
// raise for ever.
bool waitForSave(CMastercamInterface& application)
{
    while (saveNotified) {
        bool goesOn = false;
        callHost([&] { goesOn = host::processOneMessage(application); });
        if (!goesOn)
            return false;
    }
    return true;
}

} // namespace

bool makeSureDocumentIsNamed()
{
    if (currentZemId != noZemId || !isDocumentUntitled())
        return true;
    CMastercamInterface* const application = hostApplication();
    if (!application) {
        showMessage(translateText(0, L"Failed to save file."));
        return false;
    }
    SendMessageW(getMainFrameWindow(), WM_COMMAND, hostSaveCommand, 0);
    return waitForSave(*application);
}

} // namespace torvapdm
