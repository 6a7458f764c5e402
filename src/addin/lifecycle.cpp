#include "addin/lifecycle.h"

#include "companion/identifiers.h"
#include "companion/network_thread.h"
#include "host/barriers.h"
#include "host/document.h"
#include "incoming/listener.h"
#include "incoming/message_window.h"

BEGIN_MESSAGE_MAP(CtorvapdmApp, CWinApp)
END_MESSAGE_MAP()

BOOL CtorvapdmApp::InitInstance()
{
    CWinApp::InitInstance();
    return TRUE;
}

static CtorvapdmApp theApplication; // registers itself with the framework

namespace torvapdm {

int openAddIn()
{
    const HWND mainWindow = getMainFrameWindow();
    registerMessages();
    openMessageWindow();
    callHost([] { AfxBeginThread(networkThread, nullptr, THREAD_PRIORITY_NORMAL, 0, 0, nullptr); });
    startListener();
    if (mainWindow)
        SetPropW(mainWindow, hostInstanceName.c_str(), reinterpret_cast<HANDLE>(INT_PTR{1}));
    return 0;
}

int closeAddIn()
{
    const HWND mainWindow = getMainFrameWindow();
    closeMessageWindow();
    RemovePropW(mainWindow, hostInstanceName.c_str());
    stopListener();
    return 0;
}

} // namespace torvapdm
