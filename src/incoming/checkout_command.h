// The check-out command: asks the Companion for a file and loads what it answers. UI thread.
#pragma once

#include "formats/companion_file.h"

namespace torvapdm {

// A parsed check-out answer; id 0 or an empty path means no file.
using CheckoutCommand = CompanionFile;

// Runs the command; always 0. Shows a message when the Companion cannot be started or its answer
// cannot be loaded.
//
// Throws std::out_of_range for an answer whose first word has fewer than three characters.
int runCheckoutCommand();

// The path of a new answer file, which the Companion is to write; empty when the path of this
// second is taken.
std::wstring makeExchangeFileName();

// Reads the answer file. Always an empty text: opening the file empties it. The file stays open and
// is deleted when the host's process ends.
std::wstring readAnswer(const std::wstring& path);

// Parses an answer and sets `fileTypePrefix`. A check-in answer instead sets both ids to 0, clears
// `fileTypePrefix`, closes the process's C streams and the document, and wakes the message window.
//
// Throws std::out_of_range for a first word of fewer than three characters.
CheckoutCommand parseAnswer(const std::wstring& text);

// Loads the answered file and makes it the Companion's current file. Shows a message when there is
// none or it cannot be loaded.
void loadAnsweredFile(const CheckoutCommand& command);

} // namespace torvapdm
