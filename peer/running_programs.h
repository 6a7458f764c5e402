// The running hosts and the running Companion, found by their windows, and what a second start of
// the Companion hands to the first.
#pragma once

#include "peer/handle.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace peer {

struct Host {
    std::uint32_t process = 0; // process id
    std::wstring title;        // of its main window

    bool operator==(const Host&) const = default;
};

struct SemaphoreCounts {
    LONG current = 0;
    LONG maximum = 0;

    bool operator==(const SemaphoreCounts&) const = default;
};

// One entry for each process with a top-level window that has the host property, in order of
// process id.
std::vector<Host> findHosts();

// At most 255 characters.
std::wstring windowTitle(HWND window);

DWORD processOf(HWND window);

// Creates the semaphore that marks the running instance; it exists as long as the handle. Empty
// when another process holds it.
OwnHandle claimInstance();

// Whether any process holds that semaphore, also one that this user may not open.
bool isInstanceRunning();

// Reads the counts of that semaphore and does not change them. Empty when there is none, or when
// this user may not read them.
std::optional<SemaphoreCounts> readInstanceCounts();

// The running instance's main window; null while it has none.
HWND findInstanceWindow();

// Sends the arguments to the running instance and returns whether it carried them out. Empty when
// the window has closed meanwhile, so that the caller can look again.
std::optional<bool> handOver(HWND window, const std::wstring& arguments);

// Asks the running instance to end and waits up to ten seconds until its process has ended.
std::optional<bool> handOverQuit(HWND window, const std::wstring& arguments);

// The arguments in a WM_COPYDATA message; empty when it is another program's message.
std::optional<std::wstring> parseHandedOver(LPARAM copyData);

// The results of WM_COPYDATA. A window that does not handle the message returns zero.
inline constexpr LRESULT answerCarriedOut = 1;
inline constexpr LRESULT answerNotCarriedOut = 2;

} // namespace peer
