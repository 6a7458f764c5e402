#include "incoming/window_posts.h"

#include "shared_state.h"

namespace torvapdm {

namespace {

void post(UINT message)
{
    if (const HWND window = messageWindow)
        PostMessageW(window, message, 0, 0);
}

} // namespace

void postOpenMessage()
{
    post(openMessage);
}

void wakeMessageWindow()
{
    post(WM_MOVE);
}

} // namespace torvapdm
