// Opens a file that the Companion asked the running host to open. UI thread.
#pragma once

#include <cstdint>
#include <string>

namespace torvapdm {

// Brings the host's window forward, remembers the file as recently opened and loads it. True when
// it was loaded: it is then the current file of the Companion. False silently when the host is
// busy, with a message when the file does not exist or cannot be loaded.
bool openFile(std::int32_t id, const std::wstring& path);

} // namespace torvapdm
