// The one running instance and the starts that find it running.
#pragma once

#include "handle.h"

#include <optional>
#include <string>
#include <windows.h>

namespace companion {

// Creates the semaphore that marks the running instance; it lives as long as the handle. Empty
// when another process holds it.
OwnHandle claimInstance();

// The running instance's main window; null while it has none.
HWND findInstanceWindow();

// Hands the arguments to the running instance and gives whether it carried them out. Empty when
// the window went away meanwhile, so that the caller can look again.
std::optional<bool> handOver(HWND window, const std::wstring& arguments);

// Asks the running instance to end and waits, at most ten seconds, until its process has ended.
std::optional<bool> handOverQuit(HWND window, const std::wstring& arguments);

// The arguments in a WM_COPYDATA message; empty when it is not one of ours.
std::optional<std::wstring> readHandedOver(LPARAM copyData);

// The answers to WM_COPYDATA. Zero is what a window gives that does not know the message.
inline constexpr LRESULT carriedOut = 1;
inline constexpr LRESULT notCarriedOut = 2;

} // namespace companion
