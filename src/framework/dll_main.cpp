// DllMain of a DLL built on the framework: passes attach and detach to the application object.
#include "framework/threads.h"

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID)
{
    CWinApp* const application = AfxGetApp();
    if (!application)
        return TRUE;
    if (reason == DLL_PROCESS_ATTACH)
        return application->InitInstance();
    if (reason == DLL_PROCESS_DETACH)
        application->ExitInstance();
    return TRUE;
}
