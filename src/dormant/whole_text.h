// A reader for whole text files in UTF-8. No flow of this release calls it.
#pragma once

#include <string>

namespace torvapdm {

// The file's text; empty when it cannot be opened. Writes "File Open Success\n" or "File Open
// Error\n" to the standard output.
std::wstring readWholeText(const std::wstring& path);

} // namespace torvapdm
