// The debug log, "\sys\mcxlog.txt" under the installation folder.
#pragma once

#include "platform/compiler.h"

namespace torvapdm {

// Appends the formatted 8-bit text, as printf formats it, with nothing before or behind it. Writes
// nothing when the file cannot be opened.
void debugLog(const char* format, ...) TORVA_PRINTF_LIKE(1, 2);

} // namespace torvapdm
