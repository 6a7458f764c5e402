#include "addin/command_menu.h"

#include "companion/process.h"
#include "companion/identifiers.h"
#include "host/message_box.h"
#include "shared_state.h"
#include "platform/text.h"
#include "outgoing/setup_sheet.h"

#include <memory>

namespace torvapdm {

namespace {

enum MenuCommand : UINT {
    titleItem = 0xF0AD4F01,
    openItem = 0xF0AD4F02,
    websiteItem = 0xF0AD4F03,
    aboutItem = 0xF0AD4F04,
    // Deliberate: "Tools" and "Import NC-Files" are one command. One would expect the NC import
    // behind the second; both hand over the setup sheet.
    setupSheetItem = 0xF0AD4F05,
    firstRecentItem = 0xF0AD4F06,
};

// Always on.
constexpr bool showRecentFilesInMenu = true;

void appendItem(HMENU menu, UINT id, const std::wstring& text)
{
    AppendMenuW(menu, MF_STRING, id, translateText(0, text).c_str());
}

void appendSeparator(HMENU menu)
{
    AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
}

void appendRecentFiles(HMENU menu)
{
    if (!showRecentFilesInMenu || recentFiles.empty())
        return;
    appendSeparator(menu);
    UINT id = firstRecentItem;
    for (const RecentFile& file : recentFiles)
        appendItem(menu, id++, file.path);
}

struct MenuDestroyer {
    void operator()(HMENU menu) const { DestroyMenu(menu); }
};
using Menu = std::unique_ptr<std::remove_pointer_t<HMENU>, MenuDestroyer>;

Menu createCommandMenu()
{
    Menu created(CreatePopupMenu());
    const HMENU menu = created.get();
    AppendMenuW(menu, MF_DISABLED, titleItem, productName);
    appendSeparator(menu);
    appendItem(menu, openItem, L"Open TORVA ZEM");
    appendItem(menu, websiteItem, L"Website");
    appendItem(menu, aboutItem, L"About");
    appendItem(menu, setupSheetItem, L"Tools");
    appendItem(menu, setupSheetItem, L"Import NC-Files");
    appendRecentFiles(menu);
    SetMenuDefaultItem(menu, 0, TRUE);
    return created;
}

// The chosen item's id, 0 when the menu was dismissed.
UINT letUserChoose(HMENU menu)
{
    POINT mouse{};
    GetCursorPos(&mouse);
    return static_cast<UINT>(TrackPopupMenu(menu, TPM_RETURNCMD | TPM_NONOTIFY, mouse.x, mouse.y, 0,
                                            getMainFrameWindow(), nullptr));
}

void carryOut(UINT chosen)
{
    switch (chosen) {
    case openItem:
        openCompanion();
        break;
    case websiteItem:
        openWebsite();
        break;
    case aboutItem:
        showAbout();
        break;
    case setupSheetItem:
        sendSetupSheet();
        break;
    default: // dismissed, or a recent file, which is shown and does nothing
        break;
    }
}

} // namespace

int runCommandMenu()
{
    Menu menu = createCommandMenu();
    const UINT chosen = letUserChoose(menu.get());
    menu.reset();
    carryOut(chosen);
    return 0;
}

void showAbout()
{
    const auto window = reinterpret_cast<UINT_PTR>(getMainFrameWindow());
    launchCompanion(L"--about --parentwindow " + std::to_wstring(static_cast<UINT32>(window)),
                    false);
}

void openWebsite()
{
    shellOpen(namespaceBase);
}

} // namespace torvapdm
