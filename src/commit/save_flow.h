// The save flow: brings the open file back to the Companion. UI thread.
#pragma once

namespace torvapdm {

// Runs the flow; always 0. This release has the flow's place only: nothing happens yet.
int saveFlow();

} // namespace torvapdm
