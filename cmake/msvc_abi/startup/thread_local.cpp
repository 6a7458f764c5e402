// Thread-local variables of a module: their storage, constructors and destructors.
#include <windows.h>

using Procedure = void(__cdecl*)();

#pragma section(".CRT$XLA", long, read)
#pragma section(".CRT$XLC", long, read)
#pragma section(".CRT$XLZ", long, read)
#pragma section(".CRT$XDA", long, read)
#pragma section(".CRT$XDZ", long, read)
#pragma section(".tls", long, read, write)
#pragma section(".tls$ZZZ", long, read, write)

extern "C" {

__declspec(allocate(".CRT$XDA")) Procedure __xd_a = nullptr;
__declspec(allocate(".CRT$XDZ")) Procedure __xd_z = nullptr;

unsigned long _tls_index = 0;
__declspec(allocate(".tls")) char _tls_start = 0;
__declspec(allocate(".tls$ZZZ")) char _tls_end = 0;

__declspec(thread) bool __tls_guard = false;

void __cdecl __dyn_tls_on_demand_init() noexcept
{
    if (__tls_guard)
        return;
    __tls_guard = true;
    for (Procedure* next = &__xd_a + 1; next < &__xd_z; ++next)
        if (*next)
            (*next)();
}

// The destructors of a thread's variables, last registered first.
constexpr int mostDestructors = 64;
static __declspec(thread) Procedure destructors[mostDestructors];
static __declspec(thread) int destructorCount = 0;

int __cdecl __tlregdtor(Procedure destructor)
{
    if (destructorCount == mostDestructors)
        __fastfail(FAST_FAIL_FATAL_APP_EXIT);
    destructors[destructorCount++] = destructor;
    return 0;
}

void NTAPI __dyn_tls_init(PVOID, DWORD reason, PVOID) noexcept
{
    if (reason == DLL_THREAD_ATTACH)
        __dyn_tls_on_demand_init();
    if (reason == DLL_THREAD_DETACH || reason == DLL_PROCESS_DETACH)
        while (destructorCount > 0)
            destructors[--destructorCount]();
}

__declspec(allocate(".CRT$XLA")) PIMAGE_TLS_CALLBACK __xl_a = nullptr;
__declspec(allocate(".CRT$XLC")) PIMAGE_TLS_CALLBACK __xl_c = __dyn_tls_init;
__declspec(allocate(".CRT$XLZ")) PIMAGE_TLS_CALLBACK __xl_z = nullptr;

extern const IMAGE_TLS_DIRECTORY64 _tls_used;
const IMAGE_TLS_DIRECTORY64 _tls_used = {reinterpret_cast<ULONGLONG>(&_tls_start),
                                         reinterpret_cast<ULONGLONG>(&_tls_end),
                                         reinterpret_cast<ULONGLONG>(&_tls_index),
                                         reinterpret_cast<ULONGLONG>(&__xl_a + 1),
                                         0,
                                         {0}};

} // extern "C"
