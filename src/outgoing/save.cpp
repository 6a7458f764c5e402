#include "outgoing/save.h"

#include "companion/installation.h"
#include "companion/process.h"
#include "companion/settings.h"
#include "formats/settings_file.h"
#include "host/adapter.h"
#include "host/barriers.h"
#include "host/document.h"
#include "host/message_box.h"
#include "outgoing/commit.h"
#include "outgoing/save_through_host.h"
#include "outgoing/screen_capture.h"
#include "outgoing/setup_sheet.h"
#include "shared_state.h"

namespace torvapdm {

namespace {

// ---- Naming an untitled document ---------------------------------------------------------------

// The host's command that saves the document and asks for its name.
constexpr WPARAM hostSaveCommand = 41111;

bool isDocumentUntitled()
{
    return currentZemId == noZemId && isSaveUnreported && hostFileName().size() < 3;
}

// Processes the host's messages until the host reports the save; false when the host is quitting.
// An exception belongs to the message that was being processed, and does not end the wait.
bool waitForSave(CMastercamInterface& application)
{
    while (isSaveUnreported)
        if (!askHost(true, [&] { return host::processOneMessage(application); }))
            return false;
    return true;
}

bool askForDocumentName()
{
    CMastercamInterface* const application = findHostApplication();
    if (!application) {
        showMessage(L"Failed to save file.");
        return false;
    }
    SendMessageW(getMainFrameWindow(), WM_COMMAND, hostSaveCommand, 0);
    return waitForSave(*application);
}

// ---- Questions and the setup sheet before the save ---------------------------------------------

// Quirk Q49: the host is asked for both, and the answers are not used.
void askForNcNames()
{
    callHost([] { NCPrefix(nullptr); });
    callHost([] { TpMainGrpMgr.GetMainGrpList(); });
}

// Quirk Q50: once for every line of the settings file that asks for it. False when the host raised,
// which ends the save.
bool sendSetupSheetIfWanted()
{
    const auto sendForLine = [](const char* line) {
        if (hasAlwaysSaveTools(line) && currentRequestId != 0)
            sendSetupSheet();
    };
    if (callHost([&] { forEachSettingsLine(openStream(settingsFilePath(), L"r"), sendForLine); }))
        return true;
    showMessage(L"Failed to save file.");
    return false;
}

// ---- Saving ------------------------------------------------------------------------------------

// Quirk Q47: once the host has reported the save of a document whose name has more than 3
// characters, this loops forever. Each round makes a framework string of the name and drops it.
void hangIfSaveReported()
{
    while (!isSaveUnreported) {
        const std::wstring name = hostFileName();
        if (name.size() <= 3)
            return;
        const CString unusedName(name.c_str());
    }
}

bool checkUnknownDocument()
{
    hangIfSaveReported(); // Quirk Q48: also before the host is asked for changes.
    if (!hasDocumentChanged())
        return true;
    hangIfSaveReported();
    showMessage(L"Failed to save file.");
    return false;
}

bool saveKnownDocument()
{
    if (saveThroughHost())
        return true;
    showMessage(L"Failed to save file.");
    return false;
}

bool saveDocument()
{
    return currentZemId == noZemId ? checkUnknownDocument() : saveKnownDocument();
}

void saveAndCommit()
{
    if (isDocumentUntitled() && !askForDocumentName())
        return;
    askForNcNames();
    if (!sendSetupSheetIfWanted() || !ensureCompanionRunning() || !saveDocument())
        return;
    takeScreenCapture();
    // Quirk Q67: the last request's id, even if that request is still pending; 0 before any and
    // after a check-in.
    currentZemId = static_cast<std::uint32_t>(currentRequestId);
    commitDocument();
}

} // namespace

int saveToCompanion() noexcept
{
    return barrier(
        0,
        [] {
            saveAndCommit();
            return 0;
        });
}

} // namespace torvapdm
