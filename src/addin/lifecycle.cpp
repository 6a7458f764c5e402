#include "addin/lifecycle.h"

#include "framework/framework.h"
#include "incoming/command_file.h"
#include "host/host_exceptions.h"
#include "companion/identifiers.h"
#include "incoming/listener.h"
#include "incoming/message_window.h"
#include "host/message_box.h"
#include "companion/network_thread.h"
#include "shared_state.h"

namespace torvapdm {

namespace {

void createFirstCommandFile()
{
    const std::wstring path = commandFilePathNow();
    commandFilePath.assign(path);
    commandFile = createCommandFileOrNull(path);
}

void destroyMessageWindow()
{
    if (const HWND window = messageWindow.exchange(nullptr))
        DestroyWindow(window);
}

} // namespace

int openAddIn()
{
    const HWND mainWindow = getMainFrameWindow();
    registerMessages();
    destroyMessageWindow(); // of an opening that was not followed by a closing
    messageWindow = createMessageWindow();
    callHost([] { AfxBeginThread(networkThread, nullptr, THREAD_PRIORITY_NORMAL, 0, 0, nullptr); });
    if (!isListenerRunning()) { // otherwise the file is there and listened to
        createFirstCommandFile();
        startListener();
    }
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
