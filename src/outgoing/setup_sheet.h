// Sends the host's setup sheet to the Companion. UI thread.
#pragma once

namespace torvapdm {

// Has the host produce its setup sheet for the selected operations and sends the Companion the path
// of the first file. Sends nothing when the host produced none. Framework exceptions that the host
// raises propagate.
void sendSetupSheet();

} // namespace torvapdm
