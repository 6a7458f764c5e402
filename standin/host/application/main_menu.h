// The main window's menu.
#pragma once

#include <windows.h>

namespace standin {

// Owned by the window it is given to.
HMENU createMainMenu();

// Checks the rows that stand for a state, as they are now.
void checkMenuRows(HMENU menu);

} // namespace standin
