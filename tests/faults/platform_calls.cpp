#include "faults/platform_calls.h"

#include "application/imports.h"
#include "support/add_in_state.h"
#include "support/system_calls.h"

#include <algorithm>
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
    std::atomic<int> counts[128]{}; // by call number; "operator new" is 0
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
    static std::vector<std::string> all{"operator new"};
    return all;
}

template <class Tag, class Result, class... Arguments>
struct NamedCall {
    const char* name;
    Result (*function)(Arguments...);
};

template <class Result, class... Arguments, class Tag = decltype([] {})>
NamedCall<Tag, Result, Arguments...> namedCall(const char* name, Result (*function)(Arguments...))
{
    return {name, function};
}

#define CALL(function) namedCall(#function, function)

template <class Function>
Function* exportedFunction(const char* name, Function* function)
{
    for (const wchar_t* library : {L"advapi32.dll", L"kernel32.dll", cLibrary, L"user32.dll",
                                   L"gdi32.dll", L"ws2_32.dll", L"shell32.dll"})
        if (Function* const found = systems(function, name, library))
            return found;
    return nullptr;
}

// The call is redirected from its present target.
template <class Failure, class Tag, class Result, class... Arguments>
void lead(NamedCall<Tag, Result, Arguments...> call,
          std::type_identity_t<Result (*)(Arguments...)> present, Failure failure, DWORD error,
          bool actsAnyway)
{
    using Led = LedCall<Tag, Result, Arguments...>;
    Led::systems = present;
    Led::failure = static_cast<Result>(failure);
    Led::error = error;
    Led::number = static_cast<int>(names().size());
    Led::actsAnyway = actsAnyway;
    names().emplace_back(call.name);
    standin::redirectImports(GetModuleHandleW(nullptr), present, &Led::call);
}

// These calls do nothing and report failure.
template <class Failure, class... Calls>
void fail(Failure failure, DWORD error, Calls... calls)
{
    (lead(calls, exportedFunction(calls.name, calls.function), failure, error, false), ...);
}

// These calls release something: they do it and still report failure.
template <class Failure, class... Calls>
void complain(Failure failure, Calls... calls)
{
    (lead(calls, exportedFunction(calls.name, calls.function), failure, ERROR_INVALID_HANDLE, true),
     ...);
}

} // namespace

std::vector<std::string> platformCalls()
{
    return names();
}

void leadPlatformCalls()
{
    // Most calls return 0, null or -1 and report that access is denied.
    const DWORD denied = ERROR_ACCESS_DENIED;
    fail(0, denied, CALL(SetThreadPriority), CALL(MultiByteToWideChar), CALL(WideCharToMultiByte),
         CALL(GetFileAttributesExW), CALL(GetFileSizeEx), CALL(GetTempPathW), CALL(AppendMenuW),
         CALL(EnumWindows), CALL(GetCursorPos), CALL(GetWindowTextW),
         CALL(GetWindowThreadProcessId), CALL(IsIconic), CALL(IsWindowEnabled),
         CALL(RegisterClassW), CALL(RegisterWindowMessageW), CALL(SendMessageW),
         CALL(SetMenuDefaultItem), CALL(SetPropW), CALL(SetWindowTextW), CALL(ShowWindow),
         CALL(Arc), CALL(ArcTo), CALL(BitBlt), CALL(ExtTextOutW), CALL(GdiFlush), CALL(GetDIBits),
         CALL(GetObjectW), CALL(LineTo), CALL(MoveToEx));
    fail(nullptr, denied, CALL(_fsopen), CALL(fopen), CALL(fgets), CALL(fgetws),
         CALL(CreatePopupMenu), CALL(CreateWindowExW), CALL(GetDC), CALL(GetPropW),
         CALL(RemovePropW), CALL(SetActiveWindow), CALL(CreateCompatibleBitmap),
         CALL(CreateCompatibleDC), CALL(CreatePen), CALL(SelectObject));
    fail(-1, denied, CALL(ResumeThread), CALL(_waccess), CALL(_wstat64), CALL(_findfirst64),
         CALL(_findnext64), CALL(fputs), CALL(remove), CALL(wcstombs));

    fail(denied, denied, CALL(RegCreateKeyExW), CALL(RegQueryValueExW));
    fail(EACCES, denied, CALL(fopen_s), CALL(_wfopen_s));
    fail(WAIT_FAILED, denied, CALL(WaitForSingleObject));
    fail(INVALID_HANDLE_VALUE, denied, CALL(CreateFileW));
    fail(INVALID_SET_FILE_POINTER, denied, CALL(SetFilePointer));
    fail(CLR_INVALID, denied, CALL(GetPixel), CALL(SetBkColor));
    fail(WSASYSNOTREADY, denied, CALL(WSAStartup));

    fail(0, ERROR_LOCK_VIOLATION, CALL(LockFile));
    fail(0, ERROR_READ_FAULT, CALL(ReadFile));
    fail(0, ERROR_DISK_FULL, CALL(WriteFile));
    fail(0, ERROR_NOT_ENOUGH_QUOTA, CALL(PostMessageW));
    fail(nullptr, ERROR_NOT_ENOUGH_MEMORY, CALL(CreateThread));
    fail(nullptr, ERROR_FILE_NOT_FOUND, CALL(OpenSemaphoreW));
    fail(nullptr, ERROR_MOD_NOT_FOUND, CALL(LoadLibraryW));
    fail(nullptr, ERROR_PROC_NOT_FOUND, CALL(GetProcAddress));
    fail(nullptr, WSAHOST_NOT_FOUND, CALL(gethostbyname));
    fail(INVALID_SOCKET, WSAENOBUFS, CALL(socket));
    fail(-1, WSAECONNREFUSED, CALL(connect));
    fail(-1, WSAECONNRESET, CALL(send));
    fail(-1, WSAEINVAL, CALL(listen));

    complain(0, CALL(CloseHandle), CALL(UnlockFile), CALL(DestroyMenu), CALL(DestroyWindow),
             CALL(ReleaseDC), CALL(DeleteDC), CALL(DeleteObject));
    complain(-1, CALL(_findclose), CALL(fclose), CALL(_fcloseall), CALL(WSACleanup),
             CALL(closesocket));

    redirectCalls(&countedSleep, "Sleep", &countedSleep);
    redirectCalls(&ShellExecuteExW, "ShellExecuteExW", &notedShellExecute, L"shell32.dll");
    lead(namedCall("ShellExecuteExW", notedShellExecute), &notedShellExecute, 0, denied, false);
}

void watchPlatformCalls(Callers callers)
{
    for (std::atomic<int>& count : callWatch.counts)
        count = 0;
    callWatch.thread = callers == Callers::listener ? GetThreadId(AddInState::listenerThread())
                                                    : GetCurrentThreadId();
    callWatch.isOn = true;
}

std::map<std::string, int> endWatchingPlatformCalls()
{
    callWatch.isOn = false; // calls made from here on are not the add-in's
    std::map<std::string, int> made;
    for (size_t i = 0; i < names().size(); ++i)
        if (callWatch.counts[i] > 0)
            made[names()[i]] = callWatch.counts[i];
    return made;
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
    const auto place = std::ranges::find(names(), call);
    callWatch.failing = place == names().end() ? -1 : static_cast<int>(place - names().begin());
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
