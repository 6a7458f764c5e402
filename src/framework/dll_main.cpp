// The loader's entry of a DLL that is built on the framework: hands attach and detach to the
// module's application object and does nothing else.
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
