// The line sender: hands one line of 8-bit text to the Companion over a fresh TCP connection to the
// local computer, port 4559. One connection carries one line; no answer is expected.
//
//   sendLine("TOOL-7")  puts  54 4F 4F 4C 2D 37 0A  on the wire
#pragma once

#include <string>

namespace torvapdm {

// The longest line that is sent, its line feed included.
constexpr size_t longestLine = 1023;

// Sends the line with a line feed behind it, once. Nothing tells whether it arrived; a longer line
// than `longestLine` is not sent at all. UI thread: calls must not overlap.
void sendLine(std::string line);

// Starts the sockets library in version 2.0: 0 on success, else its error. Whoever starts it with
// success ends it with WSACleanup. Nothing calls it.
int startSockets();

} // namespace torvapdm
