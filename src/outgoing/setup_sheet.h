// The setup-sheet hand-over. UI thread.
#pragma once

namespace torvapdm {

// Has the host produce its setup sheet for the selected operations and tells the Companion the
// first file's path. Nothing is sent when the host produced none. Passes on the framework's
// exceptions that the host raises.
void sendSetupSheet();

} // namespace torvapdm
