// A document without a name: the host's own save command gives it one. UI thread.
#pragma once

namespace torvapdm {

// Starts the host's save command for a document that has no name yet, and processes the host's
// messages until the host reports the save. True when the save flow may go on, also at once for a
// document that has a name; false when the host has no application interface, which the user is
// told, or is quitting, or raises while it processes a message.
bool makeSureDocumentIsNamed();

} // namespace torvapdm
