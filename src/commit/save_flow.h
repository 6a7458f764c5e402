// The save flow: brings the open file back to the Companion. UI thread.
#pragma once

namespace torvapdm {

// Has the host save the document, leaves a picture of the screen, and commits the document to the
// Companion; hands the setup sheet over before when the settings ask for it. A failure ends the
// flow and is shown to the user; the result is always 0. Passes on the framework's exceptions that
// the host raises in the setup sheet.
int saveFlow();

} // namespace torvapdm
