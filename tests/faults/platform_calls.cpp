#include "faults/platform_calls.h"

#include "application/imports.h"
#include "support/add_in_state.h"
#include "support/system_calls.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <io.h>
#include <cstdlib>
#include <new>
#include <sys/stat.h>
#include <winsock2.h>
// Needs the one above.
#include <shellapi.h>

namespace testing_support {

namespace {

// Which watched call is to fail. Everything here may be asked from inside an allocation.
struct CallWatch {
    std::atomic<bool> isOn{false};
    DWORD thread = 0; // whose calls are watched
    std::atomic<int> failing{-1};
    std::atomic<int> nth{0};
    std::atomic<int> counts[128]{}; // by the calls' numbers; `allocation` has 0
};

CallWatch callWatch;

// Counts the call of this number; true when it is to fail.
bool failsNow(int number)
{
    if (!callWatch.isOn || GetCurrentThreadId() != callWatch.thread)
        return false;
    const int count = ++callWatch.counts[number];
    return number == callWatch.failing && (callWatch.nth == 0 || callWatch.nth == count);
}

// One call of the system's; `Tag` distinguishes two calls of one type.
template <class Tag, class Result, class... Arguments>
struct LedCall {
    static inline Result (*systems)(Arguments...) = nullptr;
    static inline Result failure{};
    static inline DWORD error = 0;
    static inline int number = 0;
    static inline bool actsAnyway = false;

    static Result call(Arguments... arguments)
    {
        if (!failsNow(number))
            return systems(arguments...);
        if (actsAnyway)
            systems(arguments...);
        SetLastError(error);
        errno = EACCES;
        return failure;
    }
};

std::atomic<int> starts{0};

// No program is started: what one does comes too late for an outcome.
BOOL WINAPI notedShellExecute(SHELLEXECUTEINFOW* start)
{
    ++starts;
    if ((start->fMask & SEE_MASK_NOCLOSEPROCESS) != 0)
        start->hProcess = GetCurrentProcess();
    return TRUE;
}

std::atomic<int> pauses{0};
const DWORD firstThread = GetCurrentThreadId();

void WINAPI countedSleep(DWORD milliseconds)
{
    if (GetCurrentThreadId() != firstThread)
        ++pauses;
    SleepEx(milliseconds, FALSE);
}

// The names by their numbers.
std::vector<std::string>& names()
{
    static std::vector<std::string> all{allocation};
    return all;
}

template <class Tag, class Result, class... Arguments>
void lead(const char* name, Result (*function)(Arguments...), Result failure, DWORD error,
          bool actsAnyway)
{
    using Led = LedCall<Tag, Result, Arguments...>;
    Led::systems = function;
    Led::failure = failure;
    Led::error = error;
    Led::number = static_cast<int>(names().size());
    Led::actsAnyway = actsAnyway;
    names().emplace_back(name);
    standin::redirectImports(GetModuleHandleW(nullptr), Led::systems, &Led::call);
}

// A call that does nothing and reports failure.
template <class Result, class... Arguments, class Tag = decltype([] {})>
void fails(const char* name, const wchar_t* library, Result (*function)(Arguments...),
           std::type_identity_t<Result> failure, DWORD error = ERROR_ACCESS_DENIED)
{
    lead<Tag>(name, systems(function, name, library), failure, error, false);
}

// A call that releases something: it does so and reports failure all the same.
template <class Result, class... Arguments, class Tag = decltype([] {})>
void complains(const char* name, const wchar_t* library, Result (*function)(Arguments...),
               std::type_identity_t<Result> failure)
{
    lead<Tag>(name, systems(function, name, library), failure, ERROR_INVALID_HANDLE, true);
}

void leadRegistryAndProcesses()
{
    constexpr wchar_t kernel[] = L"kernel32.dll";
    fails("RegCreateKeyExW", L"advapi32.dll", &RegCreateKeyExW, ERROR_ACCESS_DENIED);
    fails("RegQueryValueExW", L"advapi32.dll", &RegQueryValueExW, ERROR_ACCESS_DENIED);
    fails("CreateThread", kernel, &CreateThread, nullptr, ERROR_NOT_ENOUGH_MEMORY);
    fails("ResumeThread", kernel, &ResumeThread, static_cast<DWORD>(-1));
    fails("SetThreadPriority", kernel, &SetThreadPriority, FALSE);
    fails("WaitForSingleObject", kernel, &WaitForSingleObject, WAIT_FAILED);
    fails("OpenSemaphoreW", kernel, &OpenSemaphoreW, nullptr, ERROR_FILE_NOT_FOUND);
    redirectCalls(&ShellExecuteExW, "ShellExecuteExW", &notedShellExecute, L"shell32.dll");
    lead<struct ShellStart>("ShellExecuteExW", &notedShellExecute, FALSE, ERROR_ACCESS_DENIED,
                            false);
    fails("LoadLibraryW", kernel, &LoadLibraryW, nullptr, ERROR_MOD_NOT_FOUND);
    fails("GetProcAddress", kernel, &GetProcAddress, nullptr, ERROR_PROC_NOT_FOUND);
    fails("MultiByteToWideChar", kernel, &MultiByteToWideChar, 0);
    fails("WideCharToMultiByte", kernel, &WideCharToMultiByte, 0);
}

void leadFiles()
{
    constexpr wchar_t kernel[] = L"kernel32.dll";
    fails("CreateFileW", kernel, &CreateFileW, INVALID_HANDLE_VALUE);
    complains("CloseHandle", kernel, &CloseHandle, FALSE);
    fails("DeleteFileW", kernel, &DeleteFileW, FALSE);
    fails("MoveFileExW", kernel, &MoveFileExW, FALSE);
    fails("GetFileAttributesExW", kernel, &GetFileAttributesExW, FALSE);
    fails("GetFileSizeEx", kernel, &GetFileSizeEx, FALSE);
    fails("GetTempPathW", kernel, &GetTempPathW, 0);
    fails("LockFile", kernel, &LockFile, FALSE, ERROR_LOCK_VIOLATION);
    complains("UnlockFile", kernel, &UnlockFile, FALSE);
    fails("ReadFile", kernel, &ReadFile, FALSE, ERROR_READ_FAULT);
    fails("SetFilePointer", kernel, &SetFilePointer, INVALID_SET_FILE_POINTER);
    fails("WriteFile", kernel, &WriteFile, FALSE, ERROR_DISK_FULL);
}

void leadRuntime()
{
    constexpr wchar_t runtime[] = L"msvcrt.dll";
    fails("_waccess", runtime, &_waccess, -1);
    fails("_wstat64", runtime, &_wstat64, -1);
    fails("_findfirst64", runtime, &_findfirst64, -1);
    fails("_findnext64", runtime, &_findnext64, -1);
    complains("_findclose", runtime, &_findclose, -1);
    fails("_fsopen", runtime, &_fsopen, nullptr);
    fails("fopen", runtime, &std::fopen, nullptr);
    fails("fopen_s", runtime, &fopen_s, EACCES);
    fails("_wfopen_s", runtime, &_wfopen_s, EACCES);
    complains("fclose", runtime, &std::fclose, EOF);
    complains("_fcloseall", runtime, &_fcloseall, EOF);
    fails("fgets", runtime, &std::fgets, nullptr);
    fails("fgetws", runtime, &std::fgetws, nullptr);
    fails("fputs", runtime, &std::fputs, EOF);
    fails("remove", runtime, &std::remove, -1);
    fails("wcstombs", runtime, &std::wcstombs, static_cast<size_t>(-1));
}

void leadWindows()
{
    constexpr wchar_t user[] = L"user32.dll";
    fails("AppendMenuW", user, &AppendMenuW, FALSE);
    fails("CreatePopupMenu", user, &CreatePopupMenu, nullptr);
    fails("CreateWindowExW", user, &CreateWindowExW, nullptr);
    complains("DestroyMenu", user, &DestroyMenu, FALSE);
    complains("DestroyWindow", user, &DestroyWindow, FALSE);
    fails("EnumWindows", user, &EnumWindows, FALSE);
    fails("GetCursorPos", user, &GetCursorPos, FALSE);
    fails("GetDC", user, &GetDC, nullptr);
    fails("GetPropW", user, &GetPropW, nullptr);
    fails("GetWindowTextW", user, &GetWindowTextW, 0);
    fails("GetWindowThreadProcessId", user, &GetWindowThreadProcessId, 0);
    fails("IsIconic", user, &IsIconic, FALSE);
    fails("IsWindowEnabled", user, &IsWindowEnabled, FALSE);
    fails("PostMessageW", user, &PostMessageW, FALSE, ERROR_NOT_ENOUGH_QUOTA);
    fails("RegisterClassW", user, &RegisterClassW, 0);
    fails("RegisterWindowMessageW", user, &RegisterWindowMessageW, 0);
    complains("ReleaseDC", user, &ReleaseDC, 0);
    fails("RemovePropW", user, &RemovePropW, nullptr);
    fails("SendMessageW", user, &SendMessageW, 0);
    fails("SetActiveWindow", user, &SetActiveWindow, nullptr);
    fails("SetMenuDefaultItem", user, &SetMenuDefaultItem, FALSE);
    fails("SetPropW", user, &SetPropW, FALSE);
    fails("SetWindowTextW", user, &SetWindowTextW, FALSE);
    fails("ShowWindow", user, &ShowWindow, FALSE);
}

void leadGraphics()
{
    constexpr wchar_t graphics[] = L"gdi32.dll";
    fails("Arc", graphics, &Arc, FALSE);
    fails("ArcTo", graphics, &ArcTo, FALSE);
    fails("BitBlt", graphics, &BitBlt, FALSE);
    fails("CreateCompatibleBitmap", graphics, &CreateCompatibleBitmap, nullptr);
    fails("CreateCompatibleDC", graphics, &CreateCompatibleDC, nullptr);
    fails("CreatePen", graphics, &CreatePen, nullptr);
    complains("DeleteDC", graphics, &DeleteDC, FALSE);
    complains("DeleteObject", graphics, &DeleteObject, FALSE);
    fails("ExtTextOutW", graphics, &ExtTextOutW, FALSE);
    fails("GdiFlush", graphics, &GdiFlush, FALSE);
    fails("GetDIBits", graphics, &GetDIBits, 0);
    fails("GetObjectW", graphics, &GetObjectW, 0);
    fails("GetPixel", graphics, &GetPixel, CLR_INVALID);
    fails("LineTo", graphics, &LineTo, FALSE);
    fails("MoveToEx", graphics, &MoveToEx, FALSE);
    fails("SelectObject", graphics, &SelectObject, nullptr);
    fails("SetBkColor", graphics, &SetBkColor, CLR_INVALID);
}

void leadSockets()
{
    constexpr wchar_t sockets[] = L"ws2_32.dll";
    fails("WSAStartup", sockets, &WSAStartup, WSASYSNOTREADY);
    complains("WSACleanup", sockets, &WSACleanup, SOCKET_ERROR);
    fails("socket", sockets, &socket, INVALID_SOCKET, WSAENOBUFS);
    fails("gethostbyname", sockets, &gethostbyname, nullptr, WSAHOST_NOT_FOUND);
    fails("connect", sockets, &connect, SOCKET_ERROR, WSAECONNREFUSED);
    fails("send", sockets, &send, SOCKET_ERROR, WSAECONNRESET);
    fails("listen", sockets, &listen, SOCKET_ERROR, WSAEINVAL);
    complains("closesocket", sockets, &closesocket, SOCKET_ERROR);
}

} // namespace

std::vector<std::string> platformCalls()
{
    return names();
}

void leadPlatformCalls()
{
    leadRegistryAndProcesses();
    leadFiles();
    leadRuntime();
    leadWindows();
    leadGraphics();
    leadSockets();
    redirectCalls(&countedSleep, "Sleep", &countedSleep);
}

WatchedCalls::WatchedCalls(Callers callers)
{
    for (std::atomic<int>& count : callWatch.counts)
        count = 0;
    callWatch.thread = callers == Callers::listener ? GetThreadId(AddInState::listenerThread())
                                                    : GetCurrentThreadId();
    callWatch.isOn = true;
}

WatchedCalls::~WatchedCalls()
{
    callWatch.isOn = false;
}

std::vector<CallCount> WatchedCalls::made() const
{
    callWatch.isOn = false; // what follows is no call of the add-in's
    std::vector<CallCount> all;
    for (size_t i = 0; i < names().size(); ++i)
        if (callWatch.counts[i] > 0)
            all.push_back({names()[i], callWatch.counts[i]});
    return all;
}

int shellStarts()
{
    return starts;
}

int pausesOfOtherThreads()
{
    return pauses;
}

void failPlatformCall(const std::string& call, int nth)
{
    callWatch.nth = nth;
    callWatch.failing = -1;
    for (size_t i = 0; i < names().size(); ++i)
        if (!call.empty() && names()[i] == call)
            callWatch.failing = static_cast<int>(i);
}

} // namespace testing_support

// The program's own allocations. The libraries that it loads keep theirs.
void* operator new(size_t size)
{
    constexpr int allocationNumber = 0;
    void* const block =
        testing_support::failsNow(allocationNumber) ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (!block)
        throw std::bad_alloc();
    return block;
}

void operator delete(void* block) noexcept
{
    std::free(block);
}

void operator delete(void* block, size_t) noexcept
{
    std::free(block);
}
