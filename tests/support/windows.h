// Windows of other processes.
#pragma once

#include <windows.h>

namespace testing_support {

// The process's first top-level window that carries the property; null when it has none.
HWND windowWithProperty(DWORD processId, const wchar_t* property);

} // namespace testing_support
