#include "incoming/open_file.h"

#include "incoming/load.h"
#include "incoming/recent_files.h"
#include "incoming/message_window.h"
#include "host/message_box.h"
#include "platform/files.h"
#include "shared_state.h"
#include "platform/text.h"

namespace torvapdm {

namespace {

void bringHostForward()
{
    const HWND window = getMainFrameWindow();
    if (IsIconic(window))
        ShowWindow(window, SW_SHOWNORMAL);
    SetActiveWindow(window);
}

bool refuse(const wchar_t* reason)
{
    showMessage(translateText(0, reason));
    return false;
}

} // namespace

bool openFile(std::int32_t id, const std::wstring& path)
{
    if (!isHostReady())
        return false;
    bringHostForward();
    rememberRecentFile(recentFiles, id, path);
    if (!fileExists(path))
        return refuse(L"The file does not exist.");
    if (!loadFile(path))
        return refuse(L"Failed to load file.");
    currentFilePath.assign(path);
    currentZemId = static_cast<std::uint32_t>(id);
    return true;
}

} // namespace torvapdm
