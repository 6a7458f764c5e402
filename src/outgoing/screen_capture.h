// The picture of the host's screen that goes to the Companion with a commit. UI thread.
#pragma once

namespace torvapdm {

// Has the host write "\commit\screendump.bmp" under the installation folder, over any earlier one.
// A failure is passed over; only exceptions that are not the framework's pass on.
void takeScreenCapture();

} // namespace torvapdm
