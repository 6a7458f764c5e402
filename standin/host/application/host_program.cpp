// Start and end of the host.
#include "application/main_window.h"
#include "application/message_loop.h"
#include "control.h"
#include "core/document.h"
#include "core/session.h"
#include "core/trace.h"

#include <utility>

namespace standin {

namespace {

CFrameWnd& theFrame()
{
    static CFrameWnd frame;
    return frame;
}

} // namespace

bool startHost(const HostOptions& options)
{
    if (isRunning() || !openTrace(options.tracePath))
        return false;
    const HWND window = createMainWindow(options.visible);
    if (!window) {
        closeTrace();
        return false;
    }
    resetQuit();
    resetDocument();
    answerMessageBoxes(options.answersMessageBoxes);
    theFrame().m_hWnd = window;
    beginSession(&theFrame());
    return true;
}

void stopHost()
{
    if (!isRunning())
        return;
    endSession();
    answerMessageBoxes(false);
    DestroyWindow(std::exchange(theFrame().m_hWnd, nullptr));
    closeTrace();
}

} // namespace standin
