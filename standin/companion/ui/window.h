// The main window of the running instance.
#pragma once

#include "standin/companion/app/state.h"

#include <string>
#include <windows.h>

namespace companion {

// Creates and shows the window, which has the instance property from then on. The state must
// outlive it. Null when it cannot be created.
HWND createMainWindow(State& state);

// Carries out the arguments of this start or of a later one that handed them over. False when they
// were refused or not understood.
bool receiveArguments(HWND window, const std::wstring& arguments);

} // namespace companion
