// The values that this component keeps: for each, who writes it, who reads it and on which thread.
// "UI" and "listener" are the threads of shared_state.h.
#pragma once

#include "shared_state.h"
#include "platform/windows_api.h"

#include <atomic>
#include <string>

namespace torvapdm {

// The message window, or null. Written: UI (m_open, m_close, the window's destruction). Read: UI,
// listener.
inline std::atomic<HWND> messageWindow{nullptr};

// The registered messages, 0 until m_open registers them, always with the same values. Written: UI
// (m_open, before the first listener starts). Read: UI, listener (`openMessage`); the other two are
// registered for the Companion and used by nothing in this release.
inline UINT openMessage = 0;
inline UINT commitMessage = 0;
inline UINT getCheckedOutMessage = 0;

// The command file's path. Written: UI (m_open, before the listener starts), then listener. Read:
// listener.
extern SharedPath commandFilePath;

// The handle that keeps the command file alive: null or INVALID_HANDLE_VALUE when there is none,
// and the closed handle after m_close.
// Written: UI (m_open, before the listener starts), then listener. Read: listener, UI (m_close,
// after the listener has ended; the check-out command, while it runs).
inline std::atomic<HANDLE> commandFile{nullptr};

// The listener's thread, or null. Written and read: UI (m_open, m_close).
inline HANDLE listenerThread = nullptr;

// Makes the listener end. Written: UI (m_close). Read: listener.
// Quirk Q9: nothing resets it, so the listener of an m_open after an m_close ends at once.
inline std::atomic<unsigned char> listenerStopFlag{0};

// The first three characters of a check-out answer's first word, "CAD" for a file of a CAD system.
// Empty in this release, so that `isCadFile` is false: no answer is ever read (Quirk Q17).
// Written: UI (check-out command). Read: UI (load, machine settings).
inline std::wstring fileTypePrefix;

inline bool isCadFile()
{
    return fileTypePrefix == L"CAD";
}

// The second number of the machine-settings file. Written: UI (machine settings). Read by nothing
// in this release.
inline std::int32_t secondSettingsNumber = 0;

} // namespace torvapdm
