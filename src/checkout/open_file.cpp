#include "checkout/open_file.h"

#include "checkout/load_pipeline.h"
#include "checkout/recent_file_list.h"
#include "link/message_window.h"
#include "link/messages.h"
#include "link/paths.h"
#include "link/shared_values.h"
#include "link/text.h"

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
