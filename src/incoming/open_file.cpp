#include "incoming/open_file.h"

#include "host/document.h"
#include "host/message_box.h"
#include "incoming/load.h"
#include "incoming/recent_files.h"
#include "platform/files.h"
#include "shared_state.h"

namespace torvapdm {

namespace {

void bringHostToFront()
{
    const HWND window = getMainFrameWindow();
    if (IsIconic(window))
        ShowWindow(window, SW_SHOWNORMAL);
    SetActiveWindow(window);
}

} // namespace

bool openFile(const CompanionFile& file)
{
    if (!isHostReady())
        return false;
    bringHostToFront();
    addRecentFile(recentFiles, file);
    if (!fileExists(file.path)) {
        showMessage(L"The file does not exist.");
        return false;
    }
    if (!loadFile(file.path)) {
        showMessage(L"Failed to load file.");
        return false;
    }
    currentFilePath.assign(file.path);
    currentZemId = static_cast<std::uint32_t>(file.id);
    return true;
}

} // namespace torvapdm
