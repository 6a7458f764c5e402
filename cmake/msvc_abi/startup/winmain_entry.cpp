// The entry of a windowed program.
#include "module.h"

#include <corecrt_startup.h>
#include <stdlib.h>

extern "C" int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int);

// The command line after the program's name.
static LPSTR arguments()
{
    LPSTR at = GetCommandLineA();
    for (bool isQuoted = false; *at && (isQuoted || (*at != ' ' && *at != '\t')); ++at)
        if (*at == '"')
            isQuoted = !isQuoted;
    while (*at == ' ' || *at == '\t')
        ++at;
    return at;
}

static int showCommand()
{
    STARTUPINFOW info{};
    GetStartupInfoW(&info);
    return info.dwFlags & STARTF_USESHOWWINDOW ? info.wShowWindow : SW_SHOWDEFAULT;
}

extern "C" int __cdecl WinMainCRTStartup()
{
    _configure_narrow_argv(_crt_argv_unexpanded_arguments);
    _initialize_narrow_environment();
    initialiseModule();
    endProgram(WinMain(GetModuleHandleW(nullptr), nullptr, arguments(), showCommand()));
}
