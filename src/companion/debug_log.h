// The debug log, "\sys\mcxlog.txt" below the installation folder.
#pragma once

#include "platform/compiler.h"

namespace torvapdm {

// Appends the text as printf formats it, and nothing else. Does nothing when the file cannot be
// opened.
void debugLog(const char* format, ...) TORVA_PRINTF_LIKE(1, 2);

} // namespace torvapdm
