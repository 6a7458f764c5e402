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
// Must come after winsock2.h.
#include <shellapi.h>

namespace testing_support {

namespace {

// Which watched call fails. Must not allocate: read during allocations.
struct CallWatch {
    std::atomic<bool> isOn{false};
    DWORD thread = 0; // only its calls are watched
    std::atomic<int> failing{-1};
    std::atomic<int> nth{0};
    std::atomic<int> counts[128]{}; // by call number; `allocation` is 0
};

CallWatch callWatch;

// Counts this call; true if it must fail.
bool failsNow(int number)
{
    if (!callWatch.isOn || GetCurrentThreadId() != callWatch.thread)
        return false;
    const int count = ++callWatch.counts[number];
    return number == callWatch.failing && (callWatch.nth == 0 || callWatch.nth == count);
}

// One redirected system call; `Tag` distinguishes calls of the same type.
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

// Starts no program, because its effects would come too late for the outcome.
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

// Call names by call number.
std::vector<std::string>& names()
{
    static std::vector<std::string> all{allocation};
    return all;
}

template <class Tag, class Result, class... Arguments>
struct NamedCall {
    const char* name;
    Result (*function)(Arguments...);
};

template <class Result, class... Arguments, class Tag = decltype([] {})>
NamedCall<Tag, Result, Arguments...> call(const char* name, Result (*function)(Arguments...))
{
    return {name, function};
}

template <class Failure, class Tag, class Result, class... Arguments>
void lead(NamedCall<Tag, Result, Arguments...> call,
          std::type_identity_t<Result (*)(Arguments...)> systems, Failure failure, DWORD error,
          bool actsAnyway)
{
    using Led = LedCall<Tag, Result, Arguments...>;
    Led::systems = systems;
    Led::failure = static_cast<Result>(failure);
    Led::error = error;
    Led::number = static_cast<int>(names().size());
    Led::actsAnyway = actsAnyway;
    names().emplace_back(call.name);
    standin::redirectImports(GetModuleHandleW(nullptr), systems, &Led::call);
}

// The library that exports the following calls.
const wchar_t* library = nullptr;

// These calls do nothing and report failure.
template <class Failure, class... Calls>
void fail(Failure failure, DWORD error, Calls... calls)
{
    (lead(calls, systems(calls.function, calls.name, library), failure, error, false), ...);
}

// These calls release something: they do it and still report failure.
template <class Failure, class... Calls>
void complain(Failure failure, Calls... calls)
{
    (lead(calls, systems(calls.function, calls.name, library), failure, ERROR_INVALID_HANDLE, true),
     ...);
}

} // namespace

std::vector<std::string> platformCalls()
{
    return names();
}

void leadPlatformCalls()
{
    library = L"advapi32.dll";
    fail(ERROR_ACCESS_DENIED, ERROR_ACCESS_DENIED, call("RegCreateKeyExW", RegCreateKeyExW),
         call("RegQueryValueExW", RegQueryValueExW));

    library = L"kernel32.dll";
    fail(nullptr, ERROR_NOT_ENOUGH_MEMORY, call("CreateThread", CreateThread));
    fail(-1, ERROR_ACCESS_DENIED, call("ResumeThread", ResumeThread));
    fail(0, ERROR_ACCESS_DENIED, call("SetThreadPriority", SetThreadPriority),
         call("MultiByteToWideChar", MultiByteToWideChar),
         call("WideCharToMultiByte", WideCharToMultiByte), call("DeleteFileW", DeleteFileW),
         call("MoveFileExW", MoveFileExW), call("GetFileAttributesExW", GetFileAttributesExW),
         call("GetFileSizeEx", GetFileSizeEx), call("GetTempPathW", GetTempPathW));
    fail(WAIT_FAILED, ERROR_ACCESS_DENIED, call("WaitForSingleObject", WaitForSingleObject));
    fail(nullptr, ERROR_FILE_NOT_FOUND, call("OpenSemaphoreW", OpenSemaphoreW));
    fail(nullptr, ERROR_MOD_NOT_FOUND, call("LoadLibraryW", LoadLibraryW));
    fail(nullptr, ERROR_PROC_NOT_FOUND, call("GetProcAddress", GetProcAddress));
    fail(INVALID_HANDLE_VALUE, ERROR_ACCESS_DENIED, call("CreateFileW", CreateFileW));
    complain(0, call("CloseHandle", CloseHandle), call("UnlockFile", UnlockFile));
    fail(0, ERROR_LOCK_VIOLATION, call("LockFile", LockFile));
    fail(0, ERROR_READ_FAULT, call("ReadFile", ReadFile));
    fail(INVALID_SET_FILE_POINTER, ERROR_ACCESS_DENIED, call("SetFilePointer", SetFilePointer));
    fail(0, ERROR_DISK_FULL, call("WriteFile", WriteFile));

    library = cLibrary;
    fail(-1, ERROR_ACCESS_DENIED, call("_waccess", _waccess), call("_wstat64", _wstat64),
         call("_findfirst64", _findfirst64), call("_findnext64", _findnext64),
         call("fputs", std::fputs), call("remove", ::remove), call("wcstombs", std::wcstombs));
    complain(-1, call("_findclose", _findclose), call("fclose", std::fclose),
             call("_fcloseall", _fcloseall));
    fail(nullptr, ERROR_ACCESS_DENIED, call("_fsopen", _fsopen), call("fopen", std::fopen),
         call("fgets", std::fgets), call("fgetws", std::fgetws));
    fail(EACCES, ERROR_ACCESS_DENIED, call("fopen_s", fopen_s), call("_wfopen_s", _wfopen_s));

    library = L"user32.dll";
    fail(0, ERROR_ACCESS_DENIED, call("AppendMenuW", AppendMenuW), call("EnumWindows", EnumWindows),
         call("GetCursorPos", GetCursorPos), call("GetWindowTextW", GetWindowTextW),
         call("GetWindowThreadProcessId", GetWindowThreadProcessId), call("IsIconic", IsIconic),
         call("IsWindowEnabled", IsWindowEnabled), call("RegisterClassW", RegisterClassW),
         call("RegisterWindowMessageW", RegisterWindowMessageW), call("SendMessageW", SendMessageW),
         call("SetMenuDefaultItem", SetMenuDefaultItem), call("SetPropW", SetPropW),
         call("SetWindowTextW", SetWindowTextW), call("ShowWindow", ShowWindow));
    fail(nullptr, ERROR_ACCESS_DENIED, call("CreatePopupMenu", CreatePopupMenu),
         call("CreateWindowExW", CreateWindowExW), call("GetDC", GetDC), call("GetPropW", GetPropW),
         call("RemovePropW", RemovePropW), call("SetActiveWindow", SetActiveWindow));
    complain(0, call("DestroyMenu", DestroyMenu), call("DestroyWindow", DestroyWindow),
             call("ReleaseDC", ReleaseDC));
    fail(0, ERROR_NOT_ENOUGH_QUOTA, call("PostMessageW", PostMessageW));

    library = L"gdi32.dll";
    fail(0, ERROR_ACCESS_DENIED, call("Arc", Arc), call("ArcTo", ArcTo), call("BitBlt", BitBlt),
         call("ExtTextOutW", ExtTextOutW), call("GdiFlush", GdiFlush), call("GetDIBits", GetDIBits),
         call("GetObjectW", GetObjectW), call("LineTo", LineTo), call("MoveToEx", MoveToEx));
    fail(nullptr, ERROR_ACCESS_DENIED, call("CreateCompatibleBitmap", CreateCompatibleBitmap),
         call("CreateCompatibleDC", CreateCompatibleDC), call("CreatePen", CreatePen),
         call("SelectObject", SelectObject));
    complain(0, call("DeleteDC", DeleteDC), call("DeleteObject", DeleteObject));
    fail(CLR_INVALID, ERROR_ACCESS_DENIED, call("GetPixel", GetPixel),
         call("SetBkColor", SetBkColor));

    library = L"ws2_32.dll";
    fail(WSASYSNOTREADY, ERROR_ACCESS_DENIED, call("WSAStartup", WSAStartup));
    complain(-1, call("WSACleanup", WSACleanup), call("closesocket", closesocket));
    fail(INVALID_SOCKET, WSAENOBUFS, call("socket", socket));
    fail(nullptr, WSAHOST_NOT_FOUND, call("gethostbyname", gethostbyname));
    fail(-1, WSAECONNREFUSED, call("connect", connect));
    fail(-1, WSAECONNRESET, call("send", send));
    fail(-1, WSAEINVAL, call("listen", listen));

    redirectCalls(&countedSleep, "Sleep", &countedSleep);
    redirectCalls(&ShellExecuteExW, "ShellExecuteExW", &notedShellExecute, L"shell32.dll");
    lead(call("ShellExecuteExW", notedShellExecute), &notedShellExecute, 0, ERROR_ACCESS_DENIED,
         false);
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
    callWatch.isOn = false; // calls made from here on are not the add-in's
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

// Allocations of this program. Loaded libraries use their own operator new.
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
