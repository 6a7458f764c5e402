#include "outgoing/save.h"

#include "outgoing/commit.h"
#include "host/document.h"
#include "outgoing/save_if_notified.h"
#include "outgoing/screen_capture.h"
#include "formats/tools_option.h"
#include "outgoing/untitled_document.h"
#include "host/host.h"
#include "companion/process.h"
#include "host/barriers.h"
#include "platform/owners.h"
#include "host/host_exceptions.h"
#include "host/message_box.h"
#include "companion/settings.h"
#include "shared_state.h"
#include "platform/text.h"
#include "outgoing/setup_sheet.h"

namespace torvapdm {

namespace {

// Deliberate: the host is asked for both and the answers are dropped. One would expect no question;
// the host goes on seeing the calls that it has always seen in a save.
void askForNcNames()
{
    callHost([] { NCPrefix(nullptr); });
    callHost([] { TpMainGrpMgr.GetMainGrpList(); });
}

// Deliberate: the setup sheet goes out for every line that asks for it. One would expect it once;
// the Companion gets as many notices as the settings file has such lines.
void handOverToolsIfWanted()
{
    FILE* file = nullptr;
    if (_wfopen_s(&file, settingsFilePath().c_str(), L"r") != 0 || !file)
        return;
    const FileStream settings(file);
    char line[1024];
    while (std::fgets(line, sizeof line, settings.get())) {
        if (asksForTools(line) && currentRequestId != 0)
            sendSetupSheet();
        drainStandardInputLine();
    }
}

bool saveUnknownDocument()
{
    // Deliberate: asked once before the host is asked whether the document changed, for nothing.
    // One would expect one question; see there for what it does once the host has reported a save.
    saveIfNotified();
    if (!hasDocumentChanged() || saveIfNotified())
        return true;
    showMessage(translateText(0, L"Failed to save file."));
    return false;
}

bool saveKnownDocument()
{
    if (saveThroughHost())
        return true;
    showMessage(translateText(0, L"Failed to save file."));
    return false;
}

bool saveDocument()
{
    return currentZemId == noZemId ? saveUnknownDocument() : saveKnownDocument();
}

void bringDocumentBack()
{
    if (!makeSureDocumentIsNamed())
        return;
    askForNcNames();
    handOverToolsIfWanted();
    if (!ensureCompanionRunning() || !saveDocument())
        return;
    takeScreenCapture();
    currentZemId = static_cast<std::uint32_t>(currentRequestId);
    requestCommit();
}

} // namespace

int saveFlow() noexcept
{
    return atEdge(
        0,
        [] {
            bringDocumentBack();
            return 0;
        });
}

} // namespace torvapdm
