// The dialogs that ask for a part file. UI thread.
#pragma once

#include <optional>
#include <string>
#include <windows.h>

namespace standin {

// Nothing if the user cancelled.
std::optional<std::wstring> askForOpenPath(HWND parent);
std::optional<std::wstring> askForSavePath(HWND parent, const std::wstring& name);

} // namespace standin
