// The host's main window. All on the user-interface thread.
#pragma once

#include <string>
#include <windows.h>

namespace standin {

// Posted to the main window, from any thread, to start an empty part.
constexpr UINT newDocumentMessage = WM_APP + 1;

// The DLL that this code is part of.
HMODULE ownModule();

std::wstring titleOf(HWND window);

// Shows the name in the main window's title, behind two blanks and in the place of the name that
// stands there; an empty name takes it away.
void showNameInTitle(const std::wstring& name);

} // namespace standin
