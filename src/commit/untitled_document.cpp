#include "commit/untitled_document.h"

#include "commit/host_document.h"
#include "host/adapter.h"
#include "link/host_application.h"
#include "link/host_exceptions.h"
#include "link/messages.h"
#include "link/shared_values.h"
#include "link/text.h"

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
