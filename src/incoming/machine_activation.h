// The machine settings that the Companion writes for a request. UI thread.
#pragma once

namespace torvapdm {

// Reads the first line of the current request's machine-settings file, stores its two numbers,
// makes its machine definition the host's active machine and deletes the file. Does nothing when
// there is no such file; an empty one stays, and stays open (Quirk Q38).
void transferMachineSettings();

} // namespace torvapdm
