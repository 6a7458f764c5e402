#include "companion/process.h"

#include "companion/identifiers.h"
#include "companion/installation.h"
#include "host/message_box.h"
#include "platform/files.h"

#include <shellapi.h>

namespace torvapdm {

namespace {

constexpr int windowSearches = 15;
constexpr DWORD windowSearchPauseMs = 100;

BOOL CALLBACK stopAtCompanionWindow(HWND window, LPARAM found)
{
    if (!GetPropW(window, companionInstanceName.c_str()))
        return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

HWND waitForCompanionWindow()
{
    HWND window = findCompanionWindow();
    for (int tries = 0; !window && tries < windowSearches; ++tries) {
        window = findCompanionWindow();
        Sleep(windowSearchPauseMs); // Quirk Q37: also after the search that found the window.
    }
    return window;
}

} // namespace

bool isCompanionRunning()
{
    const OwnHandle semaphore =
        ownHandle(OpenSemaphoreW(SEMAPHORE_MODIFY_STATE, FALSE, companionSemaphoreName.c_str()));
    // Access denied: the semaphore exists and belongs to another user.
    return semaphore || GetLastError() == ERROR_ACCESS_DENIED;
}

bool launchCompanion(const std::wstring& arguments, bool quiet)
{
    const std::wstring program = companionProgramPath();
    if (getInstallationFolder().empty() || !fileExists(program)) {
        if (!quiet)
            showMessage(L"TORVA ZEM is not installed.");
        return false;
    }
    SHELLEXECUTEINFOW start{};
    start.cbSize = sizeof start;
    start.fMask = SEE_MASK_NOCLOSEPROCESS;
    start.lpVerb = L"open";
    start.lpFile = program.c_str();
    start.lpParameters = arguments.c_str();
    start.nShow = arguments.empty() ? SW_SHOWNORMAL : SW_HIDE;
    // Quirk Q36: the process handle is never closed.
    return ShellExecuteExW(&start) && start.hProcess;
}

bool ensureCompanionRunning()
{
    if (isCompanionRunning() || launchCompanion(L"", true))
        return true;
    showMessage(L"Failed to start TORVA ZEM. Please make sure TORVA ZEM is properly installed.");
    return false;
}

HWND findCompanionWindow()
{
    HWND found = nullptr;
    EnumWindows(stopAtCompanionWindow, reinterpret_cast<LPARAM>(&found));
    return found;
}

void openCompanion()
{
    if (!ensureCompanionRunning())
        return;
    const HWND window = waitForCompanionWindow();
    if (!window) {
        showMessage(L"Failed to open TORVA ZEM.");
        return;
    }
    if (IsIconic(window))
        ShowWindow(window, SW_SHOWNORMAL);
    SetActiveWindow(window);
}

bool shellOpen(const std::wstring& target)
{
    SHELLEXECUTEINFOW open{};
    open.cbSize = sizeof open;
    open.lpVerb = L"open";
    open.lpFile = target.c_str();
    open.nShow = SW_SHOWDEFAULT;
    return ShellExecuteExW(&open);
}

} // namespace torvapdm
