// The save: has the host save the document and commits it to the Companion. UI thread.
#pragma once

namespace torvapdm {

// Names an untitled document through the host's own save command, sends the setup sheet when the
// settings ask for it, has the host save, takes a screen picture and commits the document. A
// failure ends the save with a message box, an exception without one. Always 0.
int saveToCompanion() noexcept;

} // namespace torvapdm
