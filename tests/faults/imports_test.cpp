// Which imported system functions can fail. Every new import must be added either to the calls that
// are made to fail or to a list below.
#include "faults/platform_calls.h"
#include "support/installation.h"

#include <algorithm>
#include <cstddef>
#include <gtest/gtest.h>
#include <iterator>
#include <set>
#include <windows.h>

using namespace testing_support;

namespace {

// Called by the add-in; cannot fail, or a failure has no effect.
const std::set<std::string> harmless = {
    "DefWindowProcW",
    "GetACP",
    "GetCurrentProcessId",
    "GetCurrentThreadId",
    "GetLastError",
    "MessageBoxW",
    "MulDiv",
    "OutputDebugStringW",
    "Sleep",
    "TrackPopupMenu",
    "_errno",
    "_wcsicmp",
    "htonl",
    "htons",
    "inet_addr",
    "inet_ntoa",
    "memcpy",
    "memchr",
    "memcmp",
    "memmove",
    "memset",
    "strlen",
    "tan",
    "wcslen",
    "wcsncpy",
    "wcsrchr",
    "_time64",
    "vfprintf",
    "getchar",
};

// Called by the add-in, but not reached by any scenario.
const std::set<std::string> outOfReach = {"TerminateThread", "accept"};

// Called only by the compiler's runtime libraries and by the stack guard, which replaces one.
const std::set<std::string> runtimes = {"AddVectoredExceptionHandler",
                                        "CreateEventA",
                                        "CreateSemaphoreA",
                                        "DeleteCriticalSection",
                                        "DuplicateHandle",
                                        "EnterCriticalSection",
                                        "FormatMessageA",
                                        "GetCurrentProcess",
                                        "GetCurrentThread",
                                        "GetHandleInformation",
                                        "GetModuleHandleW",
                                        "GetProcessAffinityMask",
                                        "GetSystemTimeAsFileTime",
                                        "GetThreadContext",
                                        "GetThreadPriority",
                                        "GetTickCount64",
                                        "InitializeCriticalSection",
                                        "IsDBCSLeadByteEx",
                                        "IsDebuggerPresent",
                                        "LeaveCriticalSection",
                                        "LocalFree",
                                        "OpenProcess",
                                        "OutputDebugStringA",
                                        "QueryPerformanceCounter",
                                        "RaiseException",
                                        "ReleaseSemaphore",
                                        "RemoveVectoredExceptionHandler",
                                        "ResetEvent",
                                        "RtlCaptureContext",
                                        "RtlLookupFunctionEntry",
                                        "RtlUnwindEx",
                                        "RtlVirtualUnwind",
                                        "SetEvent",
                                        "SetLastError",
                                        "SetProcessAffinityMask",
                                        "SetThreadContext",
                                        "SuspendThread",
                                        "TlsAlloc",
                                        "TlsGetValue",
                                        "TlsSetValue",
                                        "TryEnterCriticalSection",
                                        "VirtualProtect",
                                        "VirtualQuery",
                                        "WaitForMultipleObjects",
                                        "__C_specific_handler",
                                        "___lc_codepage_func",
                                        "___mb_cur_max_func",
                                        "__iob_func",
                                        "__setusermatherr",
                                        "_amsg_exit",
                                        "_beginthreadex",
                                        "_close",
                                        "_endthreadex",
                                        "_exit",
                                        "_initterm",
                                        "_lock",
                                        "_open",
                                        "_read",
                                        "_setjmp",
                                        "_strdup",
                                        "_ultoa",
                                        "_unlock",
                                        "_write",
                                        "abort",
                                        "calloc",
                                        "exit",
                                        "fprintf",
                                        "fputc",
                                        "fputwc",
                                        "free",
                                        "fwprintf",
                                        "fwrite",
                                        "iswctype",
                                        "localeconv",
                                        "longjmp",
                                        "malloc",
                                        "printf",
                                        "realloc",
                                        "setlocale",
                                        "signal",
                                        "strcmp",
                                        "strcoll",
                                        "strerror",
                                        "strftime",
                                        "strncmp",
                                        "strncpy",
                                        "strxfrm",
                                        "towlower",
                                        "towupper",
                                        "wcscoll",
                                        "wcsftime",
                                        "wcsxfrm"};

const BYTE* libraryFile()
{
    return reinterpret_cast<const BYTE*>(LoadLibraryExW((programFolder() + L"torvapdm.dll").c_str(),
                                                        nullptr, DONT_RESOLVE_DLL_REFERENCES));
}

std::set<std::string> importedNames(const BYTE* file)
{
    const auto* const dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(file);
    const auto* const headers = reinterpret_cast<const IMAGE_NT_HEADERS64*>(file + dos->e_lfanew);
    const DWORD place =
        headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    std::set<std::string> names;
    for (const auto* row = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(file + place);
         row->Name != 0; ++row) {
        const std::string library(reinterpret_cast<const char*>(file + row->Name));
        if (library.starts_with("M")) // libraries of the host
            continue;
        for (const auto* entry = reinterpret_cast<const ULONGLONG*>(file + row->OriginalFirstThunk);
             *entry != 0; ++entry)
            names.insert(reinterpret_cast<const char*>(file + *entry +
                                                       offsetof(IMAGE_IMPORT_BY_NAME, Name)));
    }
    return names;
}

} // namespace

TEST(PlatformCalls, coverEveryImport)
{
    leadPlatformCalls();
    const BYTE* const file = libraryFile();
    ASSERT_NE(file, nullptr);
    const std::vector<std::string> led = platformCalls();
    for (const std::string& name : importedNames(file)) {
        const auto judged =
            std::ranges::count(led, name) +
            static_cast<std::ptrdiff_t>(harmless.count(name) + outOfReach.count(name) +
                                        runtimes.count(name));
        EXPECT_EQ(judged, 1) << name;
    }
}
