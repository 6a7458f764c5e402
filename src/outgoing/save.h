// The save flow: brings the open file back to the Companion. UI thread.
#pragma once

namespace torvapdm {

// Has the host save the document, leaves a picture of the screen, and commits the document to the
// Companion; hands the setup sheet over before when the settings ask for it. A failure ends the
// flow and is shown to the user; an exception ends it quietly, whoever called it. The result is
// always 0.
int saveFlow() noexcept;

} // namespace torvapdm
