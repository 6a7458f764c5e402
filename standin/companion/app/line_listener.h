// Receives the lines of hosts' add-ins on TCP port 4559, on a thread of its own, so that neither
// the window waits for a host nor a host for the window.
#pragma once

#include "event_log.h"

#include <mutex>
#include <string>
#include <thread>
#include <vector>
#include <windows.h>

namespace companion {

struct LineListener {
    std::mutex mutex;
    std::vector<std::string> arrived; // guarded by `mutex`
    std::jthread worker;
};

// Opens the port on all IPv4 addresses, for this program alone, because a host's add-in sends to
// whichever address the computer names first; and starts the thread: connections are taken from the
// return on. One that comes from another computer is closed unread. `message` is posted to the
// window when there are new lines. While another program has the port nothing is received; the
// thread goes on trying to open it. The log, which outlives the listener, then gets port-taken and,
// once the port is open, port-open.
void startListening(LineListener& listener, EventLog& log, HWND window, UINT message);

// Closes the port and every connection, and joins the thread.
void stopListening(LineListener& listener);

// All bytes of each connection that has ended since the last call, in the order in which they
// ended. A connection ends by its peer, after 1024 bytes or after five seconds; those that are
// slow hold up no other.
std::vector<std::string> takeLines(LineListener& listener);

} // namespace companion
