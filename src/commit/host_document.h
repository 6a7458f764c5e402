// The host's open document: its name, and saving it through the host. UI thread.
#pragma once

#include <string>

namespace torvapdm {

// The document's name as the host holds it, at most 260 characters.
std::wstring hostFileName();

// Has the host save the document under its name; true when it was saved. A failure leaves a line in
// the debugger's output. Clears the event-37 flag.
bool saveThroughHost();

} // namespace torvapdm
