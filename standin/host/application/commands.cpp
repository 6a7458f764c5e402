#include "application/commands.h"

#include "application/add_in.h"
#include "application/main_window.h"
#include "application/message_loop.h"
#include "application/observed_calls.h"
#include "control.h"
#include "core/document.h"
#include "core/editing.h"
#include "core/posting.h"
#include "core/session.h"

#include <utility>

#include <commdlg.h>

namespace standin {

namespace {

constexpr int savedEvent = 5;

// The path for the next save command, set by a script; empty: quit instead.
std::optional<std::wstring> nextSavePath;

constexpr DWORD longestPath = 4096;

OPENFILENAMEW dialogFor(HWND parent, std::wstring& path)
{
    path.resize(longestPath);
    OPENFILENAMEW dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = parent;
    dialog.lpstrFilter = L"Part files (*.mcam, *.emcam)\0*.mcam;*.emcam\0All files\0*.*\0";
    dialog.lpstrFile = path.data();
    dialog.nMaxFile = longestPath;
    dialog.lpstrDefExt = L"mcam";
    // The current folder belongs to the process, so to the add-in too.
    dialog.Flags = OFN_NOCHANGEDIR;
    return dialog;
}

std::wstring upToNul(const std::wstring& text)
{
    return text.substr(0, text.find(L'\0'));
}

// Nothing if the user cancelled.
std::optional<std::wstring> askForOpenPath(HWND parent)
{
    std::wstring path;
    OPENFILENAMEW dialog = dialogFor(parent, path);
    dialog.Flags |= OFN_FILEMUSTEXIST;
    if (!GetOpenFileNameW(&dialog))
        return std::nullopt;
    return upToNul(path);
}

std::optional<std::wstring> askForSavePath(HWND parent, const std::wstring& name)
{
    std::wstring path = name;
    OPENFILENAMEW dialog = dialogFor(parent, path);
    dialog.Flags |= OFN_OVERWRITEPROMPT;
    if (!GetSaveFileNameW(&dialog))
        return std::nullopt;
    return upToNul(path);
}

void reportFailure(const wchar_t* text)
{
    // A scripted run has nobody to close this box.
    if (!areMessageBoxesAnswered())
        MessageBoxW(mainWindow(), text, L"Mastercam", MB_OK | MB_ICONWARNING);
}

void save(const std::wstring& path)
{
    if (!saveDocument(path)) {
        reportFailure(L"The part could not be saved.");
        return;
    }
    setDocumentName(path);
    showNameInTitle(path);
    sendEvent(savedEvent);
}

void runSaveAsCommand()
{
    const std::optional<std::wstring> scripted = std::exchange(nextSavePath, std::nullopt);
    if (scripted && scripted->empty()) {
        requestQuit();
        return;
    }
    if (scripted)
        save(*scripted);
    else if (!areMessageBoxesAnswered())
        if (const std::optional<std::wstring> path = askForSavePath(mainWindow(), documentName()))
            save(*path);
}

void runSaveCommand()
{
    const std::wstring name = documentName();
    if (name.empty())
        runSaveAsCommand();
    else
        save(name);
}

void runOpenCommand()
{
    const std::optional<std::wstring> path = askForOpenPath(mainWindow());
    if (!path)
        return;
    if (openDocument(*path))
        showNameInTitle(*path);
    else
        reportFailure(L"The file is not a part file.");
}

void runPostCommand()
{
    const std::vector<std::wstring> programs = postNcPrograms();
    showNote(programs.empty() ? L"No NC program was posted."
                              : L"Posted " + std::to_wstring(programs.size()) +
                                    L" NC programs, the first as " + programs.front());
}

void runFinishingPassCommand()
{
    if (!addFinishingPass())
        showNote(L"There is no operation to add a pass to.");
}

void runModalDialogCommand()
{
    MessageBoxW(mainWindow(), L"Mastercam is busy until this dialog is closed.", L"Mastercam",
                MB_OK | MB_ICONINFORMATION);
}

void runExportCommand(size_t place)
{
    if (place < addInExportCount)
        callExportWithExample(addInExports[place]);
}

void runEventCommand(int code)
{
    for (const int known : eventCodes)
        if (known == code)
            sendEvent(code);
}

} // namespace

void saveDialogNext(const std::wstring& path)
{
    nextSavePath = path;
}

void runNewCommand()
{
    startNewDocument();
    showNameInTitle({});
}

void runCommand(UINT command)
{
    switch (command) {
    case newCommand:
        return runNewCommand();
    case openCommand:
        return runOpenCommand();
    case saveCommand:
        return runSaveCommand();
    case saveAsCommand:
        return runSaveAsCommand();
    case modalDialogCommand:
        return runModalDialogCommand();
    case postCommand:
        return runPostCommand();
    case finishingPassCommand:
        return runFinishingPassCommand();
    case exitCommand:
        return requestQuit();
    case backplotCommand:
        return setHostSetting(&HostSettings::backplotActive, !hostSettings().backplotActive);
    default:
        break;
    }
    if (command >= firstEventCommand)
        runEventCommand(static_cast<int>(command - firstEventCommand));
    else if (command >= firstExportCommand)
        runExportCommand(command - firstExportCommand);
}

} // namespace standin
