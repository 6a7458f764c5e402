// The window that shows the tools of a part.
#pragma once

#include "standin/companion/app/announced_files.h"

#include <windows.h>

namespace companion {

// Shows the tools in a window titled `Tools 17`, the request id; the selected one with its data
// and with its picture, if that is there when it is selected. Later tool data takes the place of
// the one before.
void showTools(HWND owner, const ReceivedTools& tools);

} // namespace companion
