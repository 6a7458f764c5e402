// What is posted to the message window. Nothing is posted while there is none. Any thread.
#pragma once

namespace torvapdm {

// Tells the window that an open request may be pending.
void postOpenMessage();

// Wakes the host's message loop: the window gives the message the default treatment.
void wakeMessageWindow();

} // namespace torvapdm
