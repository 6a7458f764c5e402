// The entry of a DLL.
#include "module.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD, LPVOID);

extern "C" BOOL WINAPI _DllMainCRTStartup(HINSTANCE module, DWORD reason, LPVOID reserved)
{
    if (reason == DLL_PROCESS_ATTACH)
        initialiseModule();
    const BOOL result = DllMain(module, reason, reserved);
    if (reason == DLL_PROCESS_DETACH || (reason == DLL_PROCESS_ATTACH && !result))
        endModule();
    return result;
}
