#include "addin/application.h"

BEGIN_MESSAGE_MAP(CtorvapdmApp, CWinApp)
END_MESSAGE_MAP()

BOOL CtorvapdmApp::InitInstance()
{
    CWinApp::InitInstance();
    return TRUE;
}

// Lives from the library's load to its unload; the framework finds it by itself.
static CtorvapdmApp theApplication;
