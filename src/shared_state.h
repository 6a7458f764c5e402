// The values that two or more components share: for each, who writes it, who reads it and on which
// thread. All are constant-initialised, and no lock protects them. No platform header.
//
// "UI" is the host's user-interface thread, "listener" the thread that polls the command file. A
// number that both threads use is atomic, so that no read sees half of a write; it orders nothing
// else. The pending request, in incoming/pending_request.h, is the only data passed as a whole from
// one thread to the other.
#pragma once

#include "formats/companion_file.h"
#include "formats/wire_constants.h"

#include <array>
#include <atomic>
#include <string>
#include <vector>

namespace torvapdm {

// ---- The open document -------------------------------------------------------------------------

// Special values of the two ids below:
//
//   currentRequestId   0            no request yet, or a check-in
//                      -1           a request with this id (`noRequestId`), which opens nothing
//   currentZemId       0xFFFFFFFF   the document is not one of the Companion's (`noZemId`)
//                      0            a check-in, or a save with request id 0; counts as known
//
// A save copies currentRequestId into currentZemId, so that -1 becomes 0xFFFFFFFF.

// The id of the Companion's last request; 0 after a check-in.
// Written: listener (every open and new-file request, check-in), UI (check-in in a check-out
// answer). Read: UI (machine settings, setup sheet, tool export, save, NC queue).
inline std::atomic<std::int32_t> currentRequestId{0};

// The Companion's id of the open document, or `noZemId`.
// Written: UI (check-out command, open request, load, host events, save), listener (check-in).
// Read: UI (host events, save, commit).
inline std::atomic<std::uint32_t> currentZemId{noZemId};

// A path that two threads write without a lock. Its storage never moves: two simultaneous writers
// can mix their characters, but neither frees memory that the other uses. Not for inline variables,
// whose zeros GCC would store in the library's file.
struct SharedPath {
    std::array<wchar_t, 32768> characters{}; // the longest path that Windows opens, null-terminated

    // Truncates a longer text: no such file can have been opened.
    void assign(const std::wstring& text)
    {
        const size_t length = text.copy(characters.data(), characters.size() - 1);
        characters[length] = L'\0';
    }
    void clear() { characters[0] = L'\0'; }
    std::wstring text() const { return characters.data(); }
};

// The path of the open document when it is one of the Companion's, or empty.
// Written: UI (check-out command, open request, load, host events), listener (check-in). Read by
// nothing in this release.
extern SharedPath currentFilePath;

// The files opened for the Companion, newest first, at most 21.
// Written: UI (open request). Read: UI (menu).
inline std::vector<CompanionFile> recentFiles;

// The NC-path number of the machine settings, -1 when the document has none.
// Written: UI (load sets -1, machine settings). Read: UI (NC queue).
inline std::int32_t ncPathNumber = -1;

// ---- What the host reported --------------------------------------------------------------------

// False once the host has reported a save (event 5), true again after event 3.
// Written: UI (host events). Read: UI (save).
inline bool isSaveUnreported = true;

// A marker that nothing reads. Written: UI (event 37 sets it; load and a save through the host
// clear it).
inline bool event37Seen = false;

// True when event 5 is to take a screen picture. Written: UI (event 4 sets it when no
// ZEM id is set and `captureOnCloseEnabled` is on; events 3, 5, 6 and 52 and load clear it). Read:
// UI (event 5).
inline bool captureOnClosePending = false;

} // namespace torvapdm
