// Both ends of the line protocol on port 4559, and the ports that are open.
#pragma once

#include "peer/notice_port.h"
#include "peer/wire_constants.h"

#include <optional>
#include <set>
#include <string>

namespace testing_support {

using Sockets = peer::SocketsLibrary;

// Plays the Companion's end: listens on the loopback address.
class LineReceiver {
public:
    // Ends the test program with a message when the port stays taken.
    LineReceiver();

    // All bytes of the next connection, up to its end; nothing when none arrives within the time.
    std::optional<std::string> nextConnection() const;
    // True when no connection waits.
    bool isIdle() const;
    // Closes the next connection unread; false when none arrives within the time.
    bool hangUpOnNext() const;

private:
    peer::OwnSocket acceptNext() const;

    Sockets library_;
    peer::OwnSocket listening_{INVALID_SOCKET};
};

// The Companion's address on the loopback interface, port 4559.
sockaddr_in companionsAddress();

// Plays the add-in's end: one connection to the Companion. Needs `Sockets`.
class Client {
public:
    // `localAddress`: one of the machine's own.
    explicit Client(const char* localAddress = "127.0.0.1");

    bool isConnected() const { return isConnected_; }
    bool sendBytes(const std::string& bytes) const;
    // True once the Companion has closed its end.
    bool waitForEnd() const;

private:
    peer::OwnSocket socket_;
    bool isConnected_ = false;
};

// One connection that carries these bytes; true when they were sent.
bool sendToCompanion(const std::string& bytes);

// The error of a connection to this port of the local computer, 0 for none. Needs `Sockets`.
int connectTo(unsigned short port);

// The ports that any process has open to others: those it listens on over TCP and those it is bound
// to over UDP, of both versions of the internet protocol.
std::set<unsigned> openPorts();

} // namespace testing_support
