// The window that shows a setup sheet.
#pragma once

#include "standin/companion/app/notices.h"

#include <windows.h>

namespace companion {

// Shows the sheet in a window titled `Setup sheet 17: bracket.mcam`: the request id and the name of
// the part, or of the file if the sheet names no part. A later sheet replaces the earlier one.
void showSheet(HWND owner, const ReceivedSheet& sheet);

} // namespace companion
