// The window that shows a setup sheet.
#pragma once

#include "standin/companion/app/notices.h"

#include <windows.h>

namespace companion {

// Shows the sheet in a window titled `Setup sheet 17: bracket.mcam`, the request id and the name
// of the part, or of the file where the sheet names no part. A later sheet takes the place
// of the one before.
void showSheet(HWND owner, const ReceivedSheet& sheet);

} // namespace companion
