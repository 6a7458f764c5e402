// The exchange file of a check-out request, in the user's temporary folder.
#pragma once

#include <string>

namespace torvapdm {

// A name for the file, with a doubled backslash before "TORVA ZEM"; empty when the name of this
// second is taken.
std::wstring makeExchangeFileName();

// Reads the answer out of the file. Always an empty text: opening the file empties it. The file
// stays open and goes with the host's process.
std::wstring readAnswer(const std::wstring& path);

} // namespace torvapdm
