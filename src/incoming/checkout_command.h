// The check-out command: asks the Companion for a file and loads what it answers. UI thread.
#pragma once

#include "formats/companion_file.h"

namespace torvapdm {

// The file that an answer names; id 0 or an empty path means none.
using CheckoutCommand = CompanionFile;

// Runs the command; always 0. Shows a message box when the Companion cannot be started or its
// answer cannot be loaded.
//
// Throws std::out_of_range for an answer whose first word has fewer than three characters.
int runCheckoutCommand();

// The path of a new answer file, which the Companion is to write; empty when the path of this
// second is taken.
std::wstring makeExchangeFileName();

// Reads the answer file. Always an empty text: opening the file empties it. The file stays open and
// is deleted when the host's process ends.
std::wstring readAnswer(const std::wstring& path);

// Carries out an answer up to its load: sets `fileTypePrefix` and returns the named file. A
// check-in answer names none; it sets both ids to 0, clears `fileTypePrefix`, closes the process's
// C streams and the document, and posts WM_MOVE to the message window.
//
// Throws std::out_of_range for a first word of fewer than three characters.
CheckoutCommand parseAnswer(const std::wstring& text);

// Loads the answered file and makes it the Companion's current file. Shows a message box when there
// is none or it cannot be loaded.
void loadAnsweredFile(const CheckoutCommand& command);

} // namespace torvapdm
