// Plays the Companion's end of the line protocol: listens on the loopback address, port 4559.
#pragma once

#include <optional>
#include <string>
#include <winsock2.h>

namespace testing_support {

class LineReceiver {
public:
    // Starts to listen; ends the test program with a message when the port stays taken.
    LineReceiver();
    ~LineReceiver();
    LineReceiver(const LineReceiver&) = delete;
    LineReceiver& operator=(const LineReceiver&) = delete;

    // All bytes of the next connection, up to its end; nothing when none comes in good time.
    std::optional<std::string> nextConnection() const;
    // True when no connection waits.
    bool isIdle() const;
    // Takes the next connection and closes it unread; false when none comes in good time.
    bool hangUpOnNext() const;

private:
    SOCKET acceptNext() const;

    SOCKET listening_;
};

} // namespace testing_support
