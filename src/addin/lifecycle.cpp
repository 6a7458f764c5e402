#include "addin/lifecycle.h"

#include "framework/framework.h"
#include "link/command_file.h"
#include "link/host_exceptions.h"
#include "link/identifiers.h"
#include "link/listener.h"
#include "link/message_window.h"
#include "link/messages.h"
#include "link/network_thread.h"
#include "link/shared_values.h"

namespace torvapdm {

namespace {

void createFirstCommandFile()
{
    commandFilePath.assign(commandFilePathNow());
    commandFile = createCommandFileOrNull(commandFilePath.text());
}

void destroyMessageWindow()
{
    if (!messageWindow)
        return;
    DestroyWindow(messageWindow);
    messageWindow = nullptr;
}

} // namespace

int openAddIn()
{
    const HWND mainWindow = getMainFrameWindow();
    registerMessages();
    messageWindow = createMessageWindow();
    callHost([] { AfxBeginThread(networkThread, nullptr, THREAD_PRIORITY_NORMAL, 0, 0, nullptr); });
    createFirstCommandFile();
    startListener();
    if (mainWindow)
        SetPropW(mainWindow, hostInstanceName.c_str(), reinterpret_cast<HANDLE>(INT_PTR{1}));
    return 0;
}

int closeAddIn()
{
    const HWND mainWindow = getMainFrameWindow();
    destroyMessageWindow();
    RemovePropW(mainWindow, hostInstanceName.c_str());
    stopListener();
    return 0;
}

} // namespace torvapdm
