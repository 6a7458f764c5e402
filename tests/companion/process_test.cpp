#include "companion/process.h"

#include "companion/identifiers.h"
#include "host/message_box.h"
#include "support/companion_double.h"
#include "support/windows.h"
#include "support/counts.h"
#include "support/host_fixture.h"
#include "support/system_calls.h"
#include "support/message_boxes.h"
#include "host/document.h"
#include "incoming/incoming_state.h"

#include <algorithm>
#include <sddl.h>
#include <shellapi.h>

using namespace torvapdm;
using namespace testing_support;

namespace {

const std::wstring notInstalled = LR"(ui message-box("TORVA ZEM", "TORVA ZEM is not installed."))";
const std::wstring failedToOpen = LR"(ui message-box("TORVA ZEM", "Failed to open TORVA ZEM."))";

LRESULT CALLBACK closeActivatedDialog(int code, WPARAM wParam, LPARAM lParam)
{
    const HWND window = reinterpret_cast<HWND>(wParam);
    wchar_t name[16] = L"";
    if (code == HCBT_ACTIVATE && GetClassNameW(window, name, 16) && name == std::wstring(L"#32770"))
        PostMessageW(window, WM_COMMAND, IDOK, 0);
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

// While it exists, dialogs that appear on this thread are closed with OK immediately.
struct SystemDialogs {
    HHOOK hook = SetWindowsHookExW(WH_CBT, closeActivatedDialog, nullptr, GetCurrentThreadId());
    SystemDialogs() = default;
    ~SystemDialogs() { UnhookWindowsHookEx(hook); }
    SystemDialogs(const SystemDialogs&) = delete;
    SystemDialogs& operator=(const SystemDialogs&) = delete;
};

class CompanionProcess : public HostFixture {
protected:
    CompanionDouble companion;
};

int starts = 0;
SHELLEXECUTEINFOW lastStart{};
std::wstring lastVerb;
HANDLE startedProcess = GetCurrentProcess();

// Counts the call and reports success without starting a process.
BOOL WINAPI countedShellExecute(SHELLEXECUTEINFOW* start)
{
    ++starts;
    lastStart = *start;
    lastVerb = start->lpVerb;
    start->hProcess = startedProcess;
    return TRUE;
}

DWORD semaphoreAccess = 0;
BOOL isSemaphoreInherited = TRUE;

HANDLE WINAPI notedOpenSemaphore(DWORD access, BOOL inherits, LPCWSTR name)
{
    semaphoreAccess = access;
    isSemaphoreInherited = inherits;
    return systems(&OpenSemaphoreW, "OpenSemaphoreW")(access, inherits, name);
}

std::vector<std::string> raisingSteps;

BOOL WINAPI notedShow(HWND window, int command)
{
    raisingSteps.push_back("show " + std::to_string(command));
    return systems(&ShowWindow, "ShowWindow", L"user32.dll")(window, command);
}

HWND WINAPI notedActivate(HWND window)
{
    raisingSteps.push_back("activate");
    return systems(&SetActiveWindow, "SetActiveWindow", L"user32.dll")(window);
}

// The recorded steps of the wait for the Companion's window, and the window that gets the instance
// property during a pause.
std::vector<std::string> waitSteps;
HWND appearing = nullptr;

BOOL WINAPI notedEnumWindows(WNDENUMPROC callback, LPARAM parameter)
{
    waitSteps.push_back("search");
    return systems(&EnumWindows, "EnumWindows", L"user32.dll")(callback, parameter);
}

void WINAPI notedSleep(DWORD milliseconds)
{
    waitSteps.push_back("pause " + std::to_string(milliseconds));
    if (appearing)
        SetPropW(appearing, companionInstanceName.c_str(), reinterpret_cast<HANDLE>(INT_PTR{1}));
}

void noteWaitSteps()
{
    redirectCalls(&EnumWindows, "EnumWindows", &notedEnumWindows, L"user32.dll");
    redirectCalls(&Sleep, "Sleep", &notedSleep);
}

} // namespace

TEST(SharedNames, startWithTheNamespaceBase)
{
    const std::wstring base = namespaceBase + L"/namespace/torvapdm";
    EXPECT_EQ(openMessageName, base + L"/message/open");
    EXPECT_EQ(commitMessageName, base + L"/message/commit");
    EXPECT_EQ(getCheckedOutMessageName, base + L"/message/get-checked-out");
    EXPECT_EQ(hostInstanceName, base + L"/mastercam-instance");
    EXPECT_EQ(companionInstanceName, base + L"/instance");
    EXPECT_EQ(companionSemaphoreName, L"Local\\" + base + L"/singleton-token");
}

TEST_F(CompanionProcess, runsWhileItsSemaphoreExists)
{
    EXPECT_FALSE(isCompanionRunning());
    companion.holdSemaphore();
    redirectCalls(&OpenSemaphoreW, "OpenSemaphoreW", &notedOpenSemaphore);
    const size_t handles = countHandles();
    EXPECT_TRUE(isCompanionRunning());
    EXPECT_EQ(countHandles(), handles);
    EXPECT_EQ(semaphoreAccess, DWORD{SEMAPHORE_MODIFY_STATE});
    EXPECT_FALSE(isSemaphoreInherited);
}

TEST_F(CompanionProcess, runsEvenIfTheSemaphoreIsDenied)
{
    SECURITY_ATTRIBUTES denied = {sizeof denied, nullptr, FALSE};
    ASSERT_TRUE(ConvertStringSecurityDescriptorToSecurityDescriptorW(
        L"D:(D;;0x1F0003;;;WD)", SDDL_REVISION_1, &denied.lpSecurityDescriptor, nullptr));
    companion.holdSemaphore(&denied);
    LocalFree(denied.lpSecurityDescriptor);
    ASSERT_EQ(OpenSemaphoreW(SEMAPHORE_MODIFY_STATE, FALSE, companionSemaphoreName.c_str()),
              nullptr);
    ASSERT_EQ(GetLastError(), DWORD{ERROR_ACCESS_DENIED});
    EXPECT_TRUE(isCompanionRunning());
}

TEST_F(CompanionProcess, isShownWithoutArguments)
{
    recordCompanionStarts(installation);
    EXPECT_TRUE(launchCompanion(L"", true));
    EXPECT_EQ(companionStarts(installation, 1), Lines{L"1"});
}

TEST_F(CompanionProcess, isHiddenWithArguments)
{
    recordCompanionStarts(installation);
    EXPECT_TRUE(launchCompanion(L"--about --parentwindow 0", false));
    EXPECT_EQ(companionStarts(installation, 1), Lines{L"0 --about --parentwindow 0"});
}

TEST_F(CompanionProcess, getsQuotedPathsUnchanged)
{
    recordCompanionStarts(installation);
    EXPECT_TRUE(launchCompanion(L"--commit \"C:\\a b\\\u00C4.mcam\" --id 4294967295", true));
    EXPECT_EQ(companionStarts(installation, 1),
              Lines{L"0 --commit \"C:\\a b\\\u00C4.mcam\" --id 4294967295"});
}

TEST_F(CompanionProcess, isOpenedWithoutFolderOrWindow)
{
    recordCompanionStarts(installation);
    redirectCalls(&ShellExecuteExW, "ShellExecuteExW", &countedShellExecute, L"shell32.dll");
    EXPECT_TRUE(launchCompanion(L"--about", true));
    EXPECT_EQ(lastStart.cbSize, 112u);
    EXPECT_EQ(lastStart.fMask, ULONG{SEE_MASK_NOCLOSEPROCESS});
    EXPECT_EQ(lastVerb, L"open");
    EXPECT_EQ(lastStart.lpDirectory, nullptr);
    EXPECT_EQ(lastStart.hwnd, nullptr);
    EXPECT_TRUE(shellOpen(L"https://example.org"));
    EXPECT_EQ(lastStart.cbSize, 112u);
    EXPECT_EQ(lastStart.fMask, 0u);
    EXPECT_EQ(lastVerb, L"open");
    EXPECT_EQ(lastStart.nShow, SW_SHOWDEFAULT);
    startedProcess = nullptr; // another program took the file over
    EXPECT_FALSE(launchCompanion(L"--about", true));
}

TEST_F(CompanionProcess, leavesTheProcessHandleOpen)
{
    recordCompanionStarts(installation);
    launchCompanion(L"", true); // lets the shell open its cached handles
    const size_t before = countHandles();
    for (int i = 0; i < 3; ++i)
        launchCompanion(L"", true);
    EXPECT_EQ(countHandles(), before + 3);
}

TEST_F(CompanionProcess, isReportedMissingUnlessQuiet)
{
    EXPECT_FALSE(launchCompanion(L"--about", true));
    EXPECT_EQ(newTrace(), Lines{});
    EXPECT_FALSE(launchCompanion(L"--about", false));
    EXPECT_EQ(newTrace(), Lines{notInstalled});
}

TEST_F(CompanionProcess, isMissingIfAFolderHasItsName)
{
    CreateDirectoryW(installation.path(L"TORVA-ZEM.exe").c_str(), nullptr);
    EXPECT_FALSE(launchCompanion(L"", false));
    EXPECT_EQ(newTrace(), Lines{notInstalled});
}

TEST_F(CompanionProcess, showsNothingWhenItsStartFails)
{
    const SystemDialogs dismissed;
    writeBytes(installation.path(L"TORVA-ZEM.exe"), "no program");
    EXPECT_FALSE(launchCompanion(L"", false));
    EXPECT_EQ(newTrace(), Lines{});
}

TEST_F(CompanionProcess, isNotStartedAgainWhileItRuns)
{
    recordCompanionStarts(installation);
    redirectCalls(&ShellExecuteExW, "ShellExecuteExW", &countedShellExecute, L"shell32.dll");
    EXPECT_TRUE(ensureCompanionRunning());
    EXPECT_EQ(starts, 1);
    companion.holdSemaphore();
    EXPECT_TRUE(ensureCompanionRunning());
    EXPECT_EQ(starts, 1);
}

TEST_F(CompanionProcess, isStartedShownIfStopped)
{
    recordCompanionStarts(installation);
    EXPECT_TRUE(ensureCompanionRunning());
    EXPECT_EQ(companionStarts(installation, 1), Lines{L"1"});
    EXPECT_EQ(newTrace(), Lines{});
}

TEST_F(CompanionProcess, isReportedOnceIfItCannotStart)
{
    EXPECT_FALSE(ensureCompanionRunning());
    EXPECT_EQ(newTrace(), Lines{notStarted});
}

TEST_F(CompanionProcess, windowIsFoundByItsProperty)
{
    EXPECT_EQ(findCompanionWindow(), nullptr);
    const HWND window = companion.showWindow();
    EXPECT_EQ(findCompanionWindow(), window);
    RemovePropW(window, companionInstanceName.c_str());
    EXPECT_EQ(findCompanionWindow(), nullptr);
}

TEST_F(CompanionProcess, windowIsTheFirstOfSeveral)
{
    CompanionDouble another;
    const HWND first = companion.showWindow();
    const HWND second = another.showWindow();
    HWND above = first;
    while (above && above != second)
        above = GetWindow(above, GW_HWNDPREV);
    EXPECT_EQ(findCompanionWindow(), above ? second : first);
}

TEST_F(CompanionProcess, windowIsActivated)
{
    companion.holdSemaphore();
    const HWND window = companion.showWindow();
    SetActiveWindow(getMainFrameWindow());
    openCompanion();
    EXPECT_EQ(GetActiveWindow(), window);
    EXPECT_FALSE(IsIconic(window));
    EXPECT_EQ(newTrace(), Lines{});
}

TEST_F(CompanionProcess, windowIsRestored)
{
    companion.holdSemaphore();
    const HWND window = companion.showWindow();
    ShowWindow(window, SW_MINIMIZE);
    ASSERT_TRUE(IsIconic(window));
    redirectCalls(&ShowWindow, "ShowWindow", &notedShow, L"user32.dll");
    redirectCalls(&SetActiveWindow, "SetActiveWindow", &notedActivate, L"user32.dll");
    openCompanion();
    EXPECT_EQ(raisingSteps, (std::vector<std::string>{"show 1", "activate"}));
    EXPECT_FALSE(IsIconic(window));
    EXPECT_EQ(GetActiveWindow(), window);
}

TEST_F(CompanionProcess, windowStaysMaximised)
{
    companion.holdSemaphore();
    const HWND window = companion.showWindow();
    ShowWindow(window, SW_SHOWMAXIMIZED);
    openCompanion();
    EXPECT_TRUE(IsZoomed(window));
}

TEST_F(CompanionProcess, windowIsActivatedLate)
{
    companion.holdSemaphore();
    const HWND window = companion.showWindow();
    RemovePropW(window, companionInstanceName.c_str());
    SetActiveWindow(getMainFrameWindow());
    appearing = window;
    noteWaitSteps();
    openCompanion();
    EXPECT_EQ(waitSteps, (std::vector<std::string>{"search", "search", "pause 100", "search",
                                                   "pause 100"})); // also after the last search
    EXPECT_EQ(GetActiveWindow(), window);
    EXPECT_EQ(newTrace(), Lines{});
}

TEST_F(CompanionProcess, windowIsSearched16Times)
{
    companion.holdSemaphore();
    noteWaitSteps();
    openCompanion();
    EXPECT_EQ(std::ranges::count(waitSteps, "search"), 16);
    EXPECT_EQ(std::ranges::count(waitSteps, "pause 100"), 15);
    EXPECT_EQ(waitSteps.size(), 31u);
    EXPECT_EQ(newTrace(), Lines{failedToOpen});
}

TEST_F(CompanionProcess, isReportedOnceByTheOpenCommand)
{
    openCompanion();
    EXPECT_EQ(newTrace(), Lines{notStarted});
}

TEST_F(CompanionProcess, shellOpensOnlyWhatExists)
{
    const SystemDialogs dismissed;
    recordCompanionStarts(installation);
    EXPECT_TRUE(shellOpen(installation.path(L"TORVA-ZEM.exe")));
    EXPECT_EQ(companionStarts(installation, 1).size(), 1u);
    EXPECT_FALSE(shellOpen(installation.path(L"none.exe")));
    EXPECT_EQ(newTrace(), Lines{});
}
