// The entry of a console program with wmain.
#include "module.h"

#include <corecrt_startup.h>
#include <stdlib.h>

extern "C" int __cdecl wmain(int, wchar_t**);

extern "C" int __cdecl wmainCRTStartup()
{
    _configure_wide_argv(_crt_argv_unexpanded_arguments);
    _initialize_wide_environment();
    initialiseModule();
    endProgram(wmain(*__p___argc(), *__p___wargv()));
}
