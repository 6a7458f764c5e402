// The host's open document: its name, whether it changed, and saving it through the host. UI
// thread.
#pragma once

#include <string>

namespace torvapdm {

// The document's name as the host holds it, at most 260 characters.
std::wstring hostFileName();

// True when the document holds changes that are not saved; false also when the host cannot tell.
bool hasDocumentChanged();

// Has the host save the document under its name; true when it was saved. A failure leaves a line in
// the debugger's output. Clears the event-37 flag.
bool saveThroughHost();

// Has the host save the document under its current name and gives that name; empty when it was not
// saved. Nothing calls it.
std::wstring saveUnderCurrentName();

} // namespace torvapdm
