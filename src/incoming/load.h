// Brings a file of the Companion into the host and leaves it there clean and saved. UI thread.
#pragma once

#include <string>

namespace torvapdm {

// Loads the file: opened by the host, named ".mcam", with the machine of the current request, saved
// under `path`. True when the host opened it; what follows the opening cannot fail the load.
// Forgets the current file of the Companion in any case; the caller sets the new one. Shows
// nothing.
bool loadFile(const std::wstring& path);

} // namespace torvapdm
