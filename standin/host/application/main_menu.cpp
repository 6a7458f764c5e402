#include "application/main_menu.h"

#include "application/add_in.h"
#include "application/commands.h"
#include "core/document.h"

namespace standin {

namespace {

HMENU createFileMenu()
{
    const HMENU menu = CreatePopupMenu();
    AppendMenuW(menu, MF_STRING, newCommand, L"&New");
    AppendMenuW(menu, MF_STRING, openCommand, L"&Open...");
    AppendMenuW(menu, MF_STRING, saveCommand, L"&Save");
    AppendMenuW(menu, MF_STRING, saveAsCommand, L"Save &As...");
    AppendMenuW(menu, MF_STRING, postCommand, L"&Post NC Programs");
    AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    AppendMenuW(menu, MF_STRING, modalDialogCommand, L"Show a Modal &Dialog (requests wait)...");
    AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    AppendMenuW(menu, MF_STRING, exitCommand, L"E&xit");
    return menu;
}

HMENU createAddInMenu()
{
    const HMENU menu = CreatePopupMenu();
    for (size_t place = 0; place < addInExportCount; ++place) {
        const std::string_view name = addInExports[place].name;
        AppendMenuW(menu, MF_STRING, firstExportCommand + place,
                    (std::wstring(addInExports[place].effect) + L" (" +
                     std::wstring(name.begin(), name.end()) + L")")
                        .c_str());
    }
    return menu;
}

HMENU createEventsMenu()
{
    const HMENU menu = CreatePopupMenu();
    for (const HostEvent& event : hostEvents)
        AppendMenuW(menu, MF_STRING, firstEventCommand + static_cast<UINT>(event.code),
                    (L"Event " + std::to_wstring(event.code) + L": " + event.effect).c_str());
    return menu;
}

HMENU createViewMenu()
{
    const HMENU menu = CreatePopupMenu();
    AppendMenuW(menu, MF_STRING, backplotCommand, L"Run a &Backplot (requests wait)");
    return menu;
}

HMENU createEditMenu()
{
    const HMENU menu = CreatePopupMenu();
    AppendMenuW(menu, MF_STRING, finishingPassCommand, L"Add a &Finishing Pass");
    return menu;
}

HMENU createHelpMenu()
{
    const HMENU menu = CreatePopupMenu();
    AppendMenuW(menu, MF_STRING, helpCommand, L"&Script Commands...");
    AppendMenuW(menu, MF_STRING, aboutCommand, L"&About Mastercam...");
    return menu;
}

void append(HMENU bar, HMENU menu, const wchar_t* text)
{
    AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(menu), text);
}

} // namespace

HMENU createMainMenu()
{
    const HMENU bar = CreateMenu();
    append(bar, createFileMenu(), L"&File");
    append(bar, createAddInMenu(), L"&Add-in");
    append(bar, createEventsMenu(), L"&Events");
    append(bar, createViewMenu(), L"&View");
    append(bar, createEditMenu(), L"E&dit");
    append(bar, createHelpMenu(), L"&Help");
    return bar;
}

void checkMenuRows(HMENU menu)
{
    const bool isActive = hostSettings().backplotActive;
    CheckMenuItem(menu, backplotCommand, isActive ? MF_CHECKED : MF_UNCHECKED);
}

} // namespace standin
