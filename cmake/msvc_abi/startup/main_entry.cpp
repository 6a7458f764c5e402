// The entry of a console program with main.
#include "module.h"

#include <corecrt_startup.h>
#include <stdlib.h>

int main(int, char**);

extern "C" int __cdecl mainCRTStartup()
{
    _configure_narrow_argv(_crt_argv_unexpanded_arguments);
    _initialize_narrow_environment();
    initialiseModule();
    endProgram(main(*__p___argc(), *__p___argv()));
}
