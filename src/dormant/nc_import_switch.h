// Whether the Companion's settings allow the import of NC files. No flow of this release asks.
#pragma once

#include "formats/nc_import_line.h"

#include <string>

namespace torvapdm {

// "y" or "n" from the settings file; "y" when it says nothing or cannot be opened. Any key other
// than the object `ncImportKey` answers "y" unread.
std::string isNcImportEnabled(const char* key);

} // namespace torvapdm
