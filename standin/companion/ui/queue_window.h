// The window that shows an NC queue.
#pragma once

#include "standin/companion/app/announced_files.h"

#include <windows.h>

namespace companion {

// Shows the programs in a window titled `NC queue: ncqueue-17.txt`. A later queue replaces the
// earlier one.
void showQueue(HWND owner, const ReceivedQueue& queue);

} // namespace companion
