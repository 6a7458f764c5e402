// Message boxes over the host's main window.
#pragma once

#include <string>

namespace torvapdm {

// The product's name, the caption of every message box of the add-in.
inline constexpr wchar_t productName[] = L"TORVA ZEM";

// Returns the text unchanged and ignores the number. Every text that the user sees goes through
// this function, so that a translation has one place.
std::wstring translateText(int number, const std::wstring& text);

// Shows the translated text with an OK button and waits for it. An empty caption means the
// product's name. UI thread.
void showMessage(const std::wstring& caption, const std::wstring& text);
void showMessage(const std::wstring& text);

} // namespace torvapdm
