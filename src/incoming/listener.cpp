#include "incoming/listener.h"

#include "incoming/command_file.h"
#include "incoming/command_dispatch.h"
#include "platform/compiler.h"
#include "host/barriers.h"
#include "incoming/pending_request.h"
#include "shared_state.h"
#include "platform/text.h"
#include "incoming/window_posts.h"

#include <io.h>

namespace torvapdm {

namespace {

constexpr DWORD pollingPeriodMs = 100;
constexpr DWORD stopWaitMs = 1000;

// A file that was moved away under the add-in's handle goes with it.
void letGoOfCommandFile()
{
    const HANDLE file = commandFile.exchange(nullptr);
    if (file && file != INVALID_HANDLE_VALUE)
        CloseHandle(file);
}

void makeSureCommandFileExists()
{
    const std::wstring path = commandFilePathNow();
    commandFilePath.assign(path);
    // Deliberate: an invalid handle is stored here as it is, not as null. One would expect the same
    // test as elsewhere; the next cycle finds no file and tries again.
    if (_waccess(path.c_str(), 0) != 0) {
        letGoOfCommandFile();
        commandFile = createCommandFile(path);
    }
}

void waitOnePeriod()
{
    // Deliberate: a file that can be opened without sharing its deletion doubles the wait. One
    // would expect one fixed period. While the add-in holds its file such an open fails, so that
    // only a file of somebody else's making is polled more slowly.
    if (opensDenyingNone(truncateToBytes(commandFilePath.text()).c_str()))
        Sleep(pollingPeriodMs);
    Sleep(pollingPeriodMs);
}

// Takes the whole request out and leaves the file new and empty.
std::string takeText(LONGLONG size)
{
    std::string text = readCommandFile(commandFile, size);
    const std::wstring path = commandFilePathNow();
    commandFilePath.assign(path);
    // Nothing is kept of the closed handle: its number may be another's before the file is there.
    CloseHandle(commandFile.exchange(nullptr));
    commandFile = createCommandFileOrNull(path);
    return text;
}

void repostPendingRequest()
{
    if (isRequestPending())
        postOpenMessage();
}

// One look at the command file; false when the listener is to end.
bool serveCommandFile()
{
    const LONGLONG size = commandFileSize(commandFile);
    // Deliberate: a file that no request can be ends the listener for good and stays as it is. One
    // would expect it to be dropped; the Companion relies on finding it untouched.
    if (size < 0 || size > longestRequest)
        return false;
    if (size == 0)
        repostPendingRequest();
    else
        carryOutCommandText(takeText(size));
    return true;
}

// One cycle; false when the listener is to end.
bool runCycle()
{
    if (listenerStopFlag)
        return false;
    makeSureCommandFileExists();
    waitOnePeriod();
    return !listenerStopFlag && serveCommandFile();
}

} // namespace

bool startListener()
{
    DWORD threadId = 0;
    const HANDLE thread =
        CreateThread(nullptr, 0, listenerProcedure, nullptr, CREATE_SUSPENDED, &threadId);
    if (!thread)
        return false;
    ResumeThread(thread);
    listenerThread = thread;
    return true;
}

bool isListenerRunning()
{
    return listenerThread && WaitForSingleObject(listenerThread, 0) == WAIT_TIMEOUT;
}

void stopListener()
{
    listenerStopFlag = 1;
    if (WaitForSingleObject(listenerThread, stopWaitMs) == WAIT_TIMEOUT)
        TerminateThread(listenerThread, 0);
    // Deliberate: closed also when it is null, and the command file's handle is not reset. One
    // would expect a test here and a null there. The host relies on closing the add-in once: a
    // second m_close without an m_open would close whatever has that handle's number by then.
    CloseHandle(listenerThread);
    listenerThread = nullptr;
    if (commandFile)
        CloseHandle(commandFile);
}

// The system calls this on the listener's own thread. A cycle that fails is given up, and the next
// one starts afresh a period later.
DWORD WINAPI listenerProcedure(LPVOID)
{
    enum class Cycle { failed, goOn, end };
    for (;;) {
        const Cycle cycle =
            atEdge(Cycle::failed, [] { return runCycle() ? Cycle::goOn : Cycle::end; });
        if (cycle == Cycle::end)
            return 0;
        if (cycle == Cycle::failed)
            Sleep(pollingPeriodMs);
    }
}

} // namespace torvapdm
