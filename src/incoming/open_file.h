// Carries out an open request in the running host. UI thread.
#pragma once

#include "formats/companion_file.h"

namespace torvapdm {

// Brings the host's window to the front, adds the file to the recent files and loads it. True when
// it was loaded: it is then the Companion's current file. False without a message box when the host
// is busy, with one when the file does not exist or cannot be loaded.
bool openFile(const CompanionFile& file);

} // namespace torvapdm
