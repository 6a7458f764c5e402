// The screen picture that goes to the Companion with a commit. UI thread.
#pragma once

namespace torvapdm {

// Has the host write "\commit\screendump.bmp" below the installation folder, in place of an earlier
// one. The host's failures and framework exceptions are ignored; other exceptions
// propagate.
void takeScreenCapture();

} // namespace torvapdm
