// The load: brings a file of the Companion into the host. UI thread.
#pragma once

#include <string>

namespace torvapdm {

// Opens the file in the host, names the document ".mcam", activates the machine of the current
// request, saves the document under `path` and marks it unchanged; a file of a CAD system is saved
// and committed instead. True when the host opened the file; nothing after that can fail the load.
// Clears the Companion's current file in any case; the caller sets it. Shows no message box.
bool loadFile(const std::wstring& path);

} // namespace torvapdm
