// The values that several rooms of the add-in share, each with who writes it, who reads it and on
// which thread. All are constant-initialised; nothing here is ever locked.
//
// "UI" is the host's user-interface thread, "listener" the command file listener. A word that both
// threads touch is atomic, which costs nothing and takes no lock; it orders nothing else. The only
// hand-over between the two is the posted open message.
#pragma once

#include "framework/framework.h"

#include "formats/recent_file.h"
#include "formats/zem_id.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <string>
#include <vector>

namespace torvapdm {

// ---- Identity of what is open ------------------------------------------------------------------

// The number of the request the Companion made last; 0 after a check-in.
// Written: listener (each open and new-file request, check-in), UI (a check-in that answers a
// check-out request). Read: UI (machine settings, setup sheet, tool export, save flow, NC queue).
inline std::atomic<std::int32_t> currentRequestId{0};

// The Companion's number for the open file, or `noZemId`.
// Written: UI (check-out request, load pipeline, host events, save flow), listener (check-in).
// Read: UI (host events, save flow, commit request).
inline std::atomic<std::uint32_t> currentZemId{noZemId};

// A text that several threads write without a lock. Its storage never moves, so that two writers at
// once can mix their characters but never free the other's memory.
struct SharedPath {
    std::array<wchar_t, 32768> characters{}; // the longest path Windows opens, and its zero

    // Longer texts are cut: no such path can have been opened.
    void assign(const std::wstring& text)
    {
        const size_t length = text.copy(characters.data(), characters.size() - 1);
        characters[length] = L'\0';
    }
    void clear() { characters[0] = L'\0'; }
    std::wstring text() const { return characters.data(); }
};

// The path of the Companion's file that is open, or empty.
// Written: UI (check-out request, load pipeline, host events), listener (check-in empties it). Read
// by no flow of this release.
inline SharedPath currentFilePath;

// The letters that lead the check-out answer's first word, "CAD" for files of a CAD system.
// Written: UI (check-out request). Read: UI (load pipeline, machine settings).
inline std::wstring fileTypePrefix;

// ---- Files opened for the Companion ------------------------------------------------------------

// Newest first, at most 21. Written: UI (openFile). Read: UI (menu).
inline std::vector<RecentFile> recentFiles;

// ---- Numbers of the machine-settings file ------------------------------------------------------

// Written: UI (each load sets -1, then the machine-settings file's first number). Read: UI (NC
// import queue).
inline std::int32_t ncPathNumber = -1;

// Written: UI (the machine-settings file's second number). Read by no flow of this release.
inline std::int32_t secondSettingsNumber = 0;

// ---- What the host reported --------------------------------------------------------------------

// True until the host reports a save (event 5), true again after event 3. Written: UI (host
// events). Read: UI (save flow).
inline bool saveNotified = true;

// A marker that nothing reads. Written: UI (event 37 on; host save and load pipeline off).
inline bool event37Seen = false;

// Deliberate: never switched on, so that event 4 never sets `captureOnClosePending` and event 5
// never takes a picture for it. One would expect a setting behind it; the dormant path is kept with
// its switch, and switching it on would write pictures nobody asked for. Read: UI (event 4).
inline bool captureOnCloseEnabled = false;

// Written: UI (event 4 may set it; events 3, 5, 6, 52 and the load pipeline clear it). Read: UI
// (event 5).
inline bool captureOnClosePending = false;

// ---- Message window and listener ---------------------------------------------------------------

// The hidden window that takes open requests, or null.
// Written: UI (m_open, m_close, the window's own end). Read: UI, listener.
inline std::atomic<HWND> messageWindow{nullptr};

// The registered messages, 0 until m_open registers them, always with the same values. Written: UI
// (m_open, before the first listener starts). Read: UI, listener (`openMessage`); the other two are
// registered so that both programs agree on them and are used by nobody yet.
inline UINT openMessage = 0;
inline UINT commitMessage = 0;
inline UINT getCheckedOutMessage = 0;

// The command file's path. Written: UI (m_open, before the listener starts), then listener. Read:
// listener.
inline SharedPath commandFilePath;

// The handle that keeps the command file alive: null or invalid when there is none, and left as it
// was after m_close.
// Written: UI (m_open, before the listener starts), then listener. Read: listener, UI (m_close,
// after the listener has ended; the check-out request, while it runs).
inline std::atomic<HANDLE> commandFile{nullptr};

// The listener's thread, null when none was started. Written and read: UI (m_open, m_close).
inline HANDLE listenerThread = nullptr;

// Tells the listener to end. Written: UI (m_close). Read: listener.
//
// Deliberate: m_close sets it and nothing ever resets it, so that the listener of a second m_open
// in the same process ends at once. One would expect m_open to reset it; the host relies on a
// closed add-in staying closed until it is loaded anew.
inline std::atomic<unsigned char> listenerStopFlag{0};

} // namespace torvapdm
