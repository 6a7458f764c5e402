// The dialogs that ask the user for a part file.
#pragma once

#include <optional>
#include <string>
#include <windows.h>

namespace standin {

// The chosen path; nothing when the user broke off.
std::optional<std::wstring> askForOpenPath(HWND parent);

// The same for saving; `name` is proposed.
std::optional<std::wstring> askForSavePath(HWND parent, const std::wstring& name);

} // namespace standin
