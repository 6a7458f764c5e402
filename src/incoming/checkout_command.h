// The check-out request: asks the Companion for a file and loads what it answers. UI thread.
#pragma once

#include <cstdint>
#include <string>

namespace torvapdm {

// The interpreted answer; id 0 or an empty path means no file.
struct CheckoutCommand {
    std::int32_t id = 0;
    std::wstring path;
};

// Runs the request; always 0. Shows a message when the Companion cannot be started or its answer
// cannot be loaded.
//
// Throws std::out_of_range for an answer whose first word has fewer than three characters.
int requestCheckout();

// Loads the file that was answered and makes it the current one of the Companion. Shows a message
// when there is none or it cannot be loaded.
void loadAnsweredFile(const CheckoutCommand& command);

// Interprets an answer and takes its kind into `fileTypePrefix`. A check-in also forgets the
// current file, closes the process's C streams and the host's document, and wakes the message
// window.
//
// Throws std::out_of_range for a first word of fewer than three characters.
CheckoutCommand parseAnswer(const std::wstring& text);

} // namespace torvapdm
