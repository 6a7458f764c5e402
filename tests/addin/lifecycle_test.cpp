#include "addin/exports.h"
#include "host/host.h"
#include "companion/identifiers.h"
#include "host/message_box.h"
#include "incoming/pending_request.h"
#include "support/add_in_state.h"
#include "support/companion_double.h"
#include "support/host_fixture.h"
#include "support/system_calls.h"
#include "host/document.h"
#include "incoming/incoming_state.h"

#include <sstream>
#include <utility>

using namespace torvapdm;
using namespace testing_support;

namespace {

class Lifecycle : public HostFixture {
protected:
    const std::wstring commandPath = installation.commandFile(GetCurrentProcessId());

    HANDLE property() { return GetPropW(getMainFrameWindow(), hostInstanceName.c_str()); }
    bool commandFileExists() { return readBytes(commandPath).has_value(); }
    bool listenerRuns()
    {
        return WaitForSingleObject(AddInState::listenerThread(), 0) == WAIT_TIMEOUT;
    }
};

using Calls = std::vector<std::string>;

const DWORD ownThread = GetCurrentThreadId();

// System calls made by m_open or m_close on this thread, in order.
Calls systemCalls;

void note(const std::string& call)
{
    if (GetCurrentThreadId() == ownThread)
        systemCalls.push_back(call);
}

// A name without the address that all identifiers begin with.
std::string shortName(LPCWSTR name)
{
    return toUtf8(name).substr(std::wstring(namespaceBase).size());
}

UINT WINAPI notedRegisterMessage(LPCWSTR name)
{
    note("register " + shortName(name));
    return systems(&RegisterWindowMessageW, "RegisterWindowMessageW", L"user32.dll")(name);
}

ATOM WINAPI notedRegisterClass(const WNDCLASSW* windowClass)
{
    note("class " + shortName(windowClass->lpszClassName));
    return systems(&RegisterClassW, "RegisterClassW", L"user32.dll")(windowClass);
}

HANDLE WINAPI notedCreateThread(LPSECURITY_ATTRIBUTES security, SIZE_T stack,
                                LPTHREAD_START_ROUTINE procedure, LPVOID parameter, DWORD flags,
                                LPDWORD id)
{
    note("thread " + std::to_string(stack) + ' ' + std::to_string(flags) +
         (security ? " secured" : ""));
    return systems(&CreateThread, "CreateThread")(security, stack, procedure, parameter, flags, id);
}

BOOL WINAPI notedPriority(HANDLE thread, int priority)
{
    note("priority " + std::to_string(priority));
    return systems(&SetThreadPriority, "SetThreadPriority")(thread, priority);
}

DWORD WINAPI notedResume(HANDLE thread)
{
    note("resume");
    return systems(&ResumeThread, "ResumeThread")(thread);
}

DWORD WINAPI noResume(HANDLE)
{
    return 1;
}

HANDLE WINAPI notedCreateFile(LPCWSTR path, DWORD access, DWORD sharing, LPSECURITY_ATTRIBUTES own,
                              DWORD disposition, DWORD flags, HANDLE model)
{
    std::ostringstream call;
    call << std::hex << "file " << access << ' ' << sharing << ' ' << disposition << ' ' << flags;
    note(call.str() + (own || model ? " with more" : ""));
    return systems(&CreateFileW, "CreateFileW")(path, access, sharing, own, disposition, flags,
                                                model);
}

BOOL WINAPI notedSetProp(HWND window, LPCWSTR name, HANDLE value)
{
    note("property " + shortName(name));
    return systems(&SetPropW, "SetPropW", L"user32.dll")(window, name, value);
}

HANDLE WINAPI notedRemoveProp(HWND window, LPCWSTR name)
{
    note("remove " + shortName(name));
    return systems(&RemovePropW, "RemovePropW", L"user32.dll")(window, name);
}

BOOL WINAPI notedDestroy(HWND window)
{
    note("destroy");
    return systems(&DestroyWindow, "DestroyWindow", L"user32.dll")(window);
}

// The name of a handle among the add-in's variables.
std::string nameOf(HANDLE handle)
{
    if (!handle)
        return "null";
    return handle == AddInState::listenerThread() ? "thread"
           : handle == AddInState::commandFile()  ? "file"
                                                  : "other";
}

DWORD WINAPI notedWait(HANDLE handle, DWORD milliseconds)
{
    note("wait " + nameOf(handle) + ' ' + std::to_string(milliseconds));
    return systems(&WaitForSingleObject, "WaitForSingleObject")(handle, milliseconds);
}

BOOL WINAPI notedTerminate(HANDLE thread, DWORD code)
{
    note("terminate " + nameOf(thread) + ' ' + std::to_string(code));
    return systems(&TerminateThread, "TerminateThread")(thread, code);
}

BOOL WINAPI notedClose(HANDLE handle)
{
    note("close " + nameOf(handle));
    return systems(&CloseHandle, "CloseHandle")(handle);
}

// Set while the listener hangs in its first Sleep.
std::atomic<bool> isListenerStuck{false};

void WINAPI stickingSleep(DWORD milliseconds)
{
    const bool isListeners = GetCurrentThreadId() != ownThread;
    if (isListeners)
        isListenerStuck = true;
    systems(&Sleep, "Sleep")(isListeners ? INFINITE : milliseconds);
}

// Opens the add-in and returns the recorded calls.
Calls callsOfOpening()
{
    redirectCalls(&RegisterWindowMessageW, "RegisterWindowMessageW", &notedRegisterMessage,
                  L"user32.dll");
    redirectCalls(&RegisterClassW, "RegisterClassW", &notedRegisterClass, L"user32.dll");
    redirectCalls(&CreateThread, "CreateThread", &notedCreateThread);
    redirectCalls(&SetThreadPriority, "SetThreadPriority", &notedPriority);
    redirectCalls(&ResumeThread, "ResumeThread", &notedResume);
    redirectCalls(&CreateFileW, "CreateFileW", &notedCreateFile);
    redirectCalls(&SetPropW, "SetPropW", &notedSetProp, L"user32.dll");
    systemCalls.clear();
    EXPECT_EQ(m_open(7), 0);
    return std::exchange(systemCalls, {});
}

// Closes the add-in and returns the recorded calls.
Calls callsOfClosing()
{
    redirectCalls(&DestroyWindow, "DestroyWindow", &notedDestroy, L"user32.dll");
    redirectCalls(&RemovePropW, "RemovePropW", &notedRemoveProp, L"user32.dll");
    redirectCalls(&WaitForSingleObject, "WaitForSingleObject", &notedWait);
    redirectCalls(&TerminateThread, "TerminateThread", &notedTerminate);
    redirectCalls(&CloseHandle, "CloseHandle", &notedClose);
    EXPECT_EQ(m_close(7), 0);
    return systemCalls;
}

const Calls openings = {"register /namespace/torvapdm/message/open",
                        "register /namespace/torvapdm/message/commit",
                        "register /namespace/torvapdm/message/get-checked-out",
                        "class /namespace/torvapdm/mastercam-instance",
                        "thread 0 4", // the network thread's
                        "priority 0",
                        "resume",
                        "file c0000000 7 2 4000000",
                        "thread 0 4",
                        "resume",
                        "property /namespace/torvapdm/mastercam-instance"};
const std::string propertyRemoved = "remove /namespace/torvapdm/mastercam-instance";

} // namespace

TEST_F(Lifecycle, startsWithoutMessageBox)
{
    EXPECT_EQ(m_open(0), 0);
    EXPECT_NE(AddInState::openMessage(), 0u);
    EXPECT_NE(AddInState::commitMessage(), 0u);
    EXPECT_NE(AddInState::getCheckedOutMessage(), 0u);
    EXPECT_TRUE(IsWindow(AddInState::messageWindow()));
    EXPECT_EQ(readBytes(commandPath), "");
    EXPECT_EQ(AddInState::commandFilePath(), commandPath);
    EXPECT_NE(AddInState::commandFile(), nullptr);
    EXPECT_TRUE(listenerRuns());
    EXPECT_EQ(property(), reinterpret_cast<HANDLE>(INT_PTR{1}));
    EXPECT_EQ(newTrace(), Lines{});
    m_close(0);
}

TEST_F(Lifecycle, startsInOrderEachTime)
{
    EXPECT_EQ(callsOfOpening(), openings);
    m_close(0);
    EXPECT_EQ(callsOfOpening(), openings);
    m_close(0);
}

TEST_F(Lifecycle, keepsNoHandleOfAFailedFile)
{
    removeFolder(installation.path(L"temp"));
    redirectCalls(&ResumeThread, "ResumeThread", &noResume); // the listener would try again
    m_open(0);
    EXPECT_EQ(AddInState::commandFile(), nullptr);
    m_close(0);
}

TEST_F(Lifecycle, stopsWithoutMessageBox)
{
    m_open(0);
    const HWND window = AddInState::messageWindow();
    EXPECT_EQ(callsOfClosing(), (Calls{"destroy", propertyRemoved, "wait thread 1000",
                                       "close thread", "close file"}));
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(AddInState::messageWindow(), nullptr);
    EXPECT_EQ(property(), nullptr);
    EXPECT_TRUE(AddInState::isListenerStopped());
    EXPECT_EQ(AddInState::listenerThread(), nullptr);
    EXPECT_FALSE(commandFileExists());
    EXPECT_NE(AddInState::commandFile(), nullptr); // closed but not reset
    EXPECT_EQ(newTrace(), Lines{});
}

TEST_F(Lifecycle, reopensWithoutWindowOrListener)
{
    m_open(0);
    m_close(0);
    EXPECT_EQ(m_open(0), 0);
    EXPECT_EQ(AddInState::messageWindow(), nullptr);
    EXPECT_TRUE(commandFileExists());
    EXPECT_NE(property(), nullptr);
    ASSERT_NE(AddInState::listenerThread(), nullptr);
    EXPECT_EQ(WaitForSingleObject(AddInState::listenerThread(), generousMs), WAIT_OBJECT_0);
    EXPECT_EQ(m_close(0), 0);
    EXPECT_FALSE(commandFileExists());
}

TEST_F(Lifecycle, losesItsWindowWhenOpenedTwice)
{
    m_open(0);
    const HWND first = AddInState::messageWindow();
    const HANDLE listener = AddInState::listenerThread();
    EXPECT_EQ(m_open(0), 0);
    EXPECT_FALSE(IsWindow(first));
    EXPECT_EQ(AddInState::messageWindow(), nullptr);
    EXPECT_EQ(AddInState::listenerThread(), listener); // the same thread
    ASSERT_TRUE(writeRequest(commandPath, openRequest(9, "C:\\a.mcam")));
    EXPECT_TRUE(waitUntil([] { return isRequestPending(); }));
    EXPECT_EQ(m_close(0), 0);
    EXPECT_FALSE(commandFileExists());
}

TEST_F(Lifecycle, worksWithoutAMainWindow)
{
    const HWND mainWindow = get_MainFrame()->GetSafeHwnd();
    standin::failNext("get_MainFrame", 2); // once for the window's parent, once for the property
    EXPECT_EQ(callsOfOpening().back(), "resume"); // and no property
    EXPECT_TRUE(IsWindow(AddInState::messageWindow()));
    EXPECT_EQ(GetWindow(AddInState::messageWindow(), GW_OWNER), nullptr);
    EXPECT_EQ(GetPropW(mainWindow, hostInstanceName.c_str()), nullptr);
    EXPECT_TRUE(commandFileExists());
    EXPECT_EQ(m_close(0), 0);
    EXPECT_FALSE(commandFileExists());
}

TEST_F(Lifecycle, worksWithoutATemporaryFolder)
{
    removeFolder(installation.path(L"temp"));
    EXPECT_EQ(m_open(0), 0);
    // Null, or invalid if the listener has already tried to open the file.
    EXPECT_TRUE(!AddInState::commandFile() || AddInState::commandFile() == INVALID_HANDLE_VALUE);
    EXPECT_TRUE(listenerRuns());
    EXPECT_EQ(m_close(0), 0);
    EXPECT_EQ(newTrace(), Lines{});
}

TEST_F(Lifecycle, listensOnceTheTempFolderExists)
{
    removeFolder(installation.path(L"temp"));
    m_open(0);
    ASSERT_TRUE(waitUntil([] { return AddInState::commandFile() == INVALID_HANDLE_VALUE; }));
    CreateDirectoryW(installation.path(L"temp").c_str(), nullptr);
    ASSERT_TRUE(waitUntil([&] { return commandFileExists(); }));
    EXPECT_TRUE(writeRequest(commandPath, openRequest(9, "")));
    EXPECT_TRUE(waitUntil([] { return AddInState::requestId() == 9; }));
    m_close(0);
}

TEST_F(Lifecycle, emptiesAnExistingCommandFile)
{
    writeBytes(commandPath, "left over");
    m_open(0);
    EXPECT_EQ(readBytes(commandPath), "");
    m_close(0);
}

TEST_F(Lifecycle, terminatesAStuckListener)
{
    redirectCalls(&Sleep, "Sleep", &stickingSleep);
    m_open(0);
    HANDLE thread = nullptr;
    ASSERT_TRUE(DuplicateHandle(GetCurrentProcess(), AddInState::listenerThread(),
                                GetCurrentProcess(), &thread, 0, FALSE, DUPLICATE_SAME_ACCESS));
    ASSERT_TRUE(waitUntil([] { return isListenerStuck.load(); }));
    EXPECT_EQ(callsOfClosing(), (Calls{"destroy", propertyRemoved, "wait thread 1000",
                                       "terminate thread 0", "close thread", "close file"}));
    EXPECT_EQ(WaitForSingleObject(thread, generousMs), WAIT_OBJECT_0);
    DWORD code = 7;
    GetExitCodeThread(thread, &code);
    EXPECT_EQ(code, 0u);
    EXPECT_FALSE(commandFileExists());
}

TEST_F(Lifecycle, canBeClosedUnopened)
{
    EXPECT_EQ(callsOfClosing(), (Calls{propertyRemoved, "wait null 1000", "close null"}));
    EXPECT_EQ(newTrace(), Lines{});
}

TEST_F(Lifecycle, returnsTheInterfaceVersion)
{
    EXPECT_EQ(m_version(2150), 2150);
    EXPECT_EQ(m_version(2200), 2100);
}

TEST_F(Lifecycle, testFunctionAsksForTheMachineGroup)
{
    EXPECT_EQ(TestFunction(), 1);
    EXPECT_EQ(newTrace(), Lines{L"ui OMgetActiveMachineGroup(true) -> null"});
    standin::raiseNext("OMgetActiveMachineGroup");
    EXPECT_EQ(TestFunction(), 1);
    EXPECT_EQ(newTrace(), Lines{L"ui OMgetActiveMachineGroup(true) raised"});
    EXPECT_EQ(standin::undeletedExceptions(), 0);
}

TEST_F(Lifecycle, returnsZeroAndOneFromTheNcStubs)
{
    EXPECT_EQ(importNC(), 0);
    EXPECT_EQ(renameNC(), 1);
    EXPECT_EQ(newTrace(), Lines{});
}
