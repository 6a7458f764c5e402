// The main window's menu.
#pragma once

#include <windows.h>

namespace standin {

// The window that it is set on owns it.
HMENU createMainMenu();

// Updates the check marks of rows that show a state.
void checkMenuRows(HMENU menu);

} // namespace standin
