// The line sender: sends notices to the Companion, one per connection to the local computer's port
// 4559. No answer is expected.
//
//   sendLine("TOOL-7") sends 54 4F 4F 4C 2D 37 0A
#pragma once

#include <string>

namespace torvapdm {

// Sends the line and a line feed, once. Reports no failure. A line longer than `longestNotice` is
// not sent. UI thread: calls share one buffer and must not overlap.
void sendLine(std::string line);

} // namespace torvapdm
