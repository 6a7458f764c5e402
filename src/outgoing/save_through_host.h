// A save through the host. UI thread.
#pragma once

namespace torvapdm {

// Has the host save the document under its name; true on success. A failure writes a line to the
// debugger output. Clears the event-37 flag.
bool saveThroughHost();

} // namespace torvapdm
