#include "incoming/listener.h"

#include "companion/installation.h"
#include "host/barriers.h"
#include "incoming/command_dispatch.h"
#include "incoming/incoming_state.h"
#include "incoming/message_window.h"
#include "incoming/pending_request.h"
#include "platform/compiler.h"
#include "platform/narrow_text.h"

#include <io.h>

namespace torvapdm {

SharedPath commandFilePath;

namespace {

constexpr DWORD pollingPeriodMs = 100;
constexpr DWORD stopWaitMs = 1000;

// ---- The command file --------------------------------------------------------------------------

std::wstring currentCommandFilePath()
{
    std::wstring path = commandFilePathOfThisProcess();
    commandFilePath.assign(path);
    return path;
}

HANDLE createCommandFileOrNull(const std::wstring& path)
{
    const HANDLE file = createCommandFile(path);
    return file == INVALID_HANDLE_VALUE ? nullptr : file;
}

// Windows deletes the file with its last handle, also under a new name.
void closeCommandFile()
{
    const HANDLE file = commandFile.exchange(nullptr);
    if (file && file != INVALID_HANDLE_VALUE)
        CloseHandle(file);
}

void ensureCommandFileExists()
{
    const std::wstring path = currentCommandFilePath();
    if (_waccess(path.c_str(), 0) == 0)
        return;
    closeCommandFile();
    commandFile = createCommandFile(path); // Quirk Q6: INVALID_HANDLE_VALUE is stored as it is.
}

// Reads the command and creates the file again, empty. Everything is allocated before that: after a
// failure the command is still in the file.
PreparedCommand takeCommand(LONGLONG size)
{
    const std::wstring path = currentCommandFilePath();
    PreparedCommand command = prepareCommand(readCommandFile(commandFile, size));
    // The value is cleared first: the handle's number can be reused before the new file exists.
    CloseHandle(commandFile.exchange(nullptr));
    commandFile = createCommandFileOrNull(path);
    return command;
}

// ---- The cycle ---------------------------------------------------------------------------------

// Polls, since the Companion signals nothing when it has written a command.
//
// Quirk Q5: for a file that can be opened without sharing its deletion, the wait is two periods.
// While the add-in has its file open that probe fails.
void waitBeforePoll()
{
    if (canOpenWithoutDeleteSharing(truncateToBytes(commandFilePath.text()).c_str()))
        Sleep(pollingPeriodMs);
    Sleep(pollingPeriodMs);
}

// False when the listener is to end.
bool serveCommandFile()
{
    const LONGLONG size = commandFileSize(commandFile);
    // Quirk Q7: for good, and the file stays as it is. Windows reports no negative size.
    if (size < 0 || size > longestCommand)
        return false;
    if (size > 0)
        dispatchCommand(takeCommand(size));
    else if (isRequestPending())
        postOpenMessage(); // in case the host was not ready at the last post
    return true;
}

// False when the listener is to end.
bool runCycle()
{
    if (listenerStopFlag)
        return false;
    ensureCommandFileExists();
    waitBeforePoll();
    return !listenerStopFlag && serveCommandFile();
}

} // namespace

HANDLE createCommandFile(const std::wstring& path)
{
    // An embedded NUL truncates the path, so CREATE_ALWAYS would destroy a different file.
    if (path.find(L'\0') != std::wstring::npos)
        return INVALID_HANDLE_VALUE;
    // All sharing is allowed: the Companion writes into the file while this handle is open.
    return CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE,
                       FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                       CREATE_ALWAYS, FILE_FLAG_DELETE_ON_CLOSE, nullptr);
}

LONGLONG commandFileSize(HANDLE file)
{
    LARGE_INTEGER size{};
    GetFileSizeEx(file, &size);
    return size.QuadPart;
}

std::string readCommandFile(HANDLE file, LONGLONG size)
{
    std::string text(static_cast<size_t>(size), '\0');
    DWORD read = 0;
    OVERLAPPED start{}; // at byte 0, since an abandoned cycle may have read the file before
    ReadFile(file, text.data(), static_cast<DWORD>(size), &read, &start);
    return text;
}

bool startListener()
{
    if (isListenerRunning())
        return true;
    commandFile = createCommandFileOrNull(currentCommandFilePath());
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

// Quirk Q8: the thread's handle is closed even when it is null, and the command file's value is not
// reset.
void stopListener()
{
    listenerStopFlag = 1;
    if (WaitForSingleObject(listenerThread, stopWaitMs) == WAIT_TIMEOUT)
        TerminateThread(listenerThread, 0);
    CloseHandle(listenerThread);
    listenerThread = nullptr;
    if (commandFile)
        CloseHandle(commandFile);
}

// A cycle that throws is abandoned, and the next one starts a period later.
DWORD WINAPI listenerProcedure(LPVOID)
{
    enum class Cycle { failed, completed, last };
    for (;;) {
        const Cycle cycle =
            barrier(Cycle::failed, [] { return runCycle() ? Cycle::completed : Cycle::last; });
        if (cycle == Cycle::last)
            return 0;
        if (cycle == Cycle::failed)
            Sleep(pollingPeriodMs);
    }
}

} // namespace torvapdm
