// The host's main window. UI thread.
#pragma once

#include <string>
#include <windows.h>

namespace standin {

// Posted to the main window by any thread to start an empty part.
constexpr UINT newDocumentMessage = WM_APP + 1;

// The DLL that this code is part of.
HMODULE ownModule();

std::wstring titleOf(HWND window);

// Appends the name to the main window's title after two spaces, replacing an earlier name; an empty
// name removes it.
void showNameInTitle(const std::wstring& name);

} // namespace standin
