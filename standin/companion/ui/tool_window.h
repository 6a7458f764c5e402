// The window that shows the tools of a part.
#pragma once

#include "standin/companion/app/announced_files.h"

#include <windows.h>

namespace companion {

// Shows the tools in a window titled `Tools 17`, with the request id; the selected one with its
// data and, if it exists at that time, its picture. Later tool data replaces the earlier.
void showTools(HWND owner, const ReceivedTools& tools);

} // namespace companion
