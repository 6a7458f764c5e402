// The window that lists the script commands. UI thread.
#pragma once

#include <windows.h>

namespace standin {

// Opens the window over its owner, or brings it to the front.
void showHelpWindow(HWND owner);

} // namespace standin
