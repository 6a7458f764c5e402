#include "companion/process.h"

#include "companion/identifiers.h"
#include "companion/installation.h"
#include "host/message_box.h"
#include "platform/files.h"
#include "platform/text.h"

#include <shellapi.h>

namespace torvapdm {

namespace {

constexpr int windowSearches = 15;
constexpr DWORD windowSearchPauseMs = 100;

void report(const wchar_t* text)
{
    showMessage(translateText(0, text));
}

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
        // Deliberate: the pause follows a repeated search also when it found the window. One would
        // expect the wait to end at once; a window that has just appeared gets 100 ms to finish.
        Sleep(windowSearchPauseMs);
    }
    return window;
}

} // namespace

bool isCompanionRunning()
{
    const HANDLE semaphore =
        OpenSemaphoreW(SEMAPHORE_MODIFY_STATE, FALSE, companionSemaphoreName.c_str());
    if (!semaphore)
        return GetLastError() == ERROR_ACCESS_DENIED;
    CloseHandle(semaphore);
    return true;
}

bool launchCompanion(const std::wstring& arguments, bool quiet)
{
    const std::wstring folder = getInstallationFolder();
    const std::wstring program = folder + L"\\TORVA-ZEM.exe";
    if (folder.empty() || !fileExists(program)) {
        if (!quiet)
            report(L"TORVA ZEM is not installed.");
        return false;
    }
    SHELLEXECUTEINFOW start{};
    start.cbSize = sizeof start;
    start.fMask = SEE_MASK_NOCLOSEPROCESS;
    start.lpVerb = L"open";
    start.lpFile = program.c_str();
    start.lpParameters = arguments.c_str();
    start.nShow = arguments.empty() ? SW_SHOWNORMAL : SW_HIDE;
    // Deliberate: the process handle is neither waited on nor closed, one for each start. One would
    // expect a CloseHandle; the handle is left to the host's end.
    return ShellExecuteExW(&start) && start.hProcess;
}

bool ensureCompanionRunning()
{
    if (isCompanionRunning() || launchCompanion(L"", true))
        return true;
    report(L"Failed to start TORVA ZEM. Please make sure TORVA ZEM is properly installed.");
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
        report(L"Failed to open TORVA ZEM.");
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
