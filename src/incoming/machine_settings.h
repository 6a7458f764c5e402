// The machine settings that the Companion leaves for a request. UI thread.
#pragma once

namespace torvapdm {

// Reads the first line of "\temp\mcsettings-" + current request id + ".txt" under the installation
// folder, takes its numbers into the shared values, makes its machine definition the host's active
// machine (twice for a file of a CAD system) and deletes the file. Does nothing when there is no
// such file; leaves an empty one where it is.
void transferMachineSettings();

} // namespace torvapdm
