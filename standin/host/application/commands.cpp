#include "application/commands.h"

#include "application/add_in.h"
#include "application/file_dialog.h"
#include "application/help_window.h"
#include "application/main_window.h"
#include "application/message_loop.h"
#include "application/observed_calls.h"
#include "control.h"
#include "core/document.h"
#include "core/editing.h"
#include "core/posting.h"
#include "core/session.h"
#include "core/text.h"

#include <optional>
#include <utility>

namespace standin {

namespace {

constexpr int savedEvent = 5;

// The path for the next save command, set by a script; empty: quit instead.
std::optional<std::wstring> nextSavePath;

// A failure is also shown as a message box, except in a scripted run, which has nobody to close it.
std::wstring failure(const std::wstring& text)
{
    if (!areMessageBoxesAnswered())
        MessageBoxW(mainWindow(), text.c_str(), L"Mastercam", MB_OK | MB_ICONWARNING);
    return text;
}

// Each of the following functions executes a command and returns its outcome for the status bar.

std::wstring save(const std::wstring& path)
{
    if (!saveDocument(path))
        return failure(L"Save failed: " + path + L" cannot be written.");
    setDocumentName(path);
    showNameInTitle(path);
    return L"Saved: " + path + L".  " + sendEvent(savedEvent);
}

std::wstring runSaveAsCommand()
{
    const std::optional<std::wstring> scripted = std::exchange(nextSavePath, std::nullopt);
    if (scripted && scripted->empty()) {
        requestQuit();
        return L"The host ends.";
    }
    if (scripted)
        return save(*scripted);
    if (!areMessageBoxesAnswered())
        if (const std::optional<std::wstring> path = askForSavePath(mainWindow(), documentName()))
            return save(*path);
    return L"Nothing was saved.";
}

std::wstring runSaveCommand()
{
    const std::wstring name = documentName();
    return name.empty() ? runSaveAsCommand() : save(name);
}

std::wstring runOpenCommand()
{
    const std::optional<std::wstring> path = askForOpenPath(mainWindow());
    if (!path)
        return L"Nothing was opened.";
    if (!openDocument(*path))
        return failure(L"Load failed: " + *path + L" is not a part file.");
    showNameInTitle(*path);
    return L"Opened: " + *path;
}

std::wstring runPostCommand()
{
    const std::vector<std::wstring> programs = postNcPrograms();
    if (programs.empty())
        return L"No NC program was posted.";
    return L"Posted " + countText(programs.size(), L"NC program") + L": " + programs.front() +
           (programs.size() > 1 ? L", \u2026" : L"");
}

std::wstring runFinishingPassCommand()
{
    const std::optional<int> id = addFinishingPass();
    if (!id)
        return L"The part has no contour to finish.";
    return L"Added operation " + std::to_wstring(*id) + L", a finishing contour.";
}

std::wstring runModalDialogCommand()
{
    MessageBoxW(mainWindow(), L"Mastercam is busy until this dialog is closed.", L"Mastercam",
                MB_OK | MB_ICONINFORMATION);
    return L"The dialog is closed.";
}

std::wstring runBackplotCommand()
{
    const bool isActive = !hostSettings().backplotActive;
    setHostSetting(&HostSettings::backplotActive, isActive);
    return isActive ? L"The backplot is running." : L"The backplot has ended.";
}

std::wstring runEmptyPartCommand()
{
    runNewCommand();
    return L"Started an empty part.";
}

std::wstring runQuitCommand()
{
    requestQuit();
    return L"The host ends.";
}

std::wstring runHelpCommand()
{
    showHelpWindow(mainWindow());
    return {};
}

std::wstring runAboutCommand()
{
    MessageBoxW(mainWindow(),
                L"A stand-in for Mastercam, for trying out and testing the TORVA ZEM add-in.\n\n"
                L"It offers the operations that the add-in uses. Every call is one line of the "
                L"trace (--trace FILE).",
                L"About Mastercam", MB_OK | MB_ICONINFORMATION);
    return {};
}

struct CommandEntry {
    UINT command;
    std::wstring (*run)();
};

constexpr CommandEntry commandEntries[] = {
    {newCommand, runEmptyPartCommand},
    {openCommand, runOpenCommand},
    {saveCommand, runSaveCommand},
    {saveAsCommand, runSaveAsCommand},
    {modalDialogCommand, runModalDialogCommand},
    {exitCommand, runQuitCommand},
    {backplotCommand, runBackplotCommand},
    {postCommand, runPostCommand},
    {finishingPassCommand, runFinishingPassCommand},
    {helpCommand, runHelpCommand},
    {aboutCommand, runAboutCommand},
};

// Empty for a command without an outcome and for an unknown one.
std::wstring runAndReport(UINT command)
{
    for (const CommandEntry& entry : commandEntries)
        if (entry.command == command)
            return entry.run();
    for (const HostEvent& event : hostEvents)
        if (firstEventCommand + static_cast<UINT>(event.code) == command)
            return sendEvent(event.code);
    if (command >= firstExportCommand && command - firstExportCommand < addInExportCount)
        return callExportWithExample(addInExports[command - firstExportCommand]);
    return {};
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
    const std::wstring outcome = runAndReport(command);
    if (!outcome.empty())
        showNote(outcome);
}

} // namespace standin
