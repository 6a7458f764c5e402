// The host's main window, and the message boxes shown over it.
#pragma once

#include "framework/framework.h"

#include <string>

namespace torvapdm {

// The product's name, the caption of every message box of the add-in.
inline constexpr wchar_t productName[] = L"TORVA ZEM";

// The host's main window, asked for until there is one and then kept; null while there is none. UI
// thread.
HWND getMainFrameWindow();

// Shows the text with an OK button and waits for it. An empty caption means the product's name. UI
// thread.
void showMessage(const std::wstring& caption, const std::wstring& text);
void showMessage(const std::wstring& text);

} // namespace torvapdm
