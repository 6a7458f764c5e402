#include "addin/command_menu.h"

#include "companion/identifiers.h"
#include "companion/process.h"
#include "formats/command_lines.h"
#include "host/document.h"
#include "host/message_box.h"
#include "outgoing/setup_sheet.h"
#include "shared_state.h"

#include <memory>

namespace torvapdm {

namespace {

enum MenuCommand : UINT {
    titleItem = 0xF0AD4F01,
    openItem = 0xF0AD4F02,
    websiteItem = 0xF0AD4F03,
    aboutItem = 0xF0AD4F04,
    // Quirk Q14: "Tools" and "Import NC-Files" are one command.
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
    for (const CompanionFile& file : recentFiles)
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

// The chosen item's id; 0 when the menu was dismissed.
UINT showMenu(HMENU menu)
{
    POINT mouse{};
    GetCursorPos(&mouse);
    return static_cast<UINT>(TrackPopupMenu(menu, TPM_RETURNCMD | TPM_NONOTIFY, mouse.x, mouse.y, 0,
                                            getMainFrameWindow(), nullptr));
}

void execute(UINT chosen)
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
    default: // dismissed, or a recent file, which does nothing when chosen
        break;
    }
}

} // namespace

int runCommandMenu()
{
    Menu menu = createCommandMenu();
    const UINT chosen = showMenu(menu.get());
    menu.reset();
    execute(chosen);
    return 0;
}

void showAbout()
{
    const auto window = reinterpret_cast<UINT_PTR>(getMainFrameWindow());
    launchCompanion(formatAboutArguments(static_cast<std::uint32_t>(window)), false);
}

void openWebsite()
{
    shellOpen(namespaceBase);
}

} // namespace torvapdm
