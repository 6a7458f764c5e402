// The initialisers and exit functions of a program or DLL.
#include "module.h"

#include <corecrt_startup.h>
#include <process.h>
#include <stdint.h>
#include <stdlib.h>

using Procedure = void(__cdecl*)();
using Initialiser = int(__cdecl*)();

// The linker sorts the sections by name, so the compiler's tables are between these symbols.
#pragma section(".CRT$XIA", long, read)
#pragma section(".CRT$XIZ", long, read)
#pragma section(".CRT$XCA", long, read)
#pragma section(".CRT$XCZ", long, read)

extern "C" {

__declspec(allocate(".CRT$XIA")) Initialiser __xi_a = nullptr;
__declspec(allocate(".CRT$XIZ")) Initialiser __xi_z = nullptr;
__declspec(allocate(".CRT$XCA")) Procedure __xc_a = nullptr;
__declspec(allocate(".CRT$XCZ")) Procedure __xc_z = nullptr;

int _fltused = 0x9875;

uintptr_t __security_cookie = 0x00002B992DDFA232;
void __security_check_cookie(uintptr_t cookie)
{
    if (cookie != __security_cookie)
        __fastfail(FAST_FAIL_STACK_COOKIE_CHECK_FAILURE);
}

void __cdecl __dyn_tls_on_demand_init() noexcept;

static _onexit_table_t exitFunctions;

// Under another name: the header declares atexit as imported, and its definition would then be
// exported.
int __cdecl registerExitFunction(Procedure procedure) __asm__("atexit");
int __cdecl registerExitFunction(Procedure procedure)
{
    return _register_onexit_function(&exitFunctions, reinterpret_cast<_onexit_t>(procedure));
}

} // extern "C"

void initialiseModule()
{
    _initialize_onexit_table(&exitFunctions);
    for (Initialiser* next = &__xi_a + 1; next < &__xi_z; ++next)
        if (*next)
            (*next)();
    __dyn_tls_on_demand_init();
    for (Procedure* next = &__xc_a + 1; next < &__xc_z; ++next)
        if (*next)
            (*next)();
}

void endModule()
{
    _execute_onexit_table(&exitFunctions);
}

void endProgram(int exitCode)
{
    endModule();
    exit(exitCode);
}

// The virtual table that every type descriptor begins with: only its destructor, which nobody
// calls. Defined under its linker name, because the compiler emits the table only with the class
// itself.
static void* __cdecl destroyTypeInfo(void* self, unsigned)
{
    return self;
}
extern "C" {
extern void*(__cdecl* const typeInfoTable[1])(void*, unsigned)__asm__("??_7type_info@@6B@");
void*(__cdecl* const typeInfoTable[1])(void*, unsigned) = {destroyTypeInfo};
}
