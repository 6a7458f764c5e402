// Both ends of the notice protocol on port 4559, and the list of open ports.
#pragma once

#include "peer/notice_port.h"
#include "peer/wire_constants.h"

#include <optional>
#include <set>
#include <string>

namespace testing_support {

using Sockets = peer::SocketsLibrary;

// Simulates the Companion's end: listens on the loopback address.
class LineReceiver {
public:
    // Exits with a message if the port stays in use.
    LineReceiver();

    // All bytes of the next connection until it is closed; nothing on timeout.
    std::optional<std::string> nextConnection() const;
    // True if no connection is waiting.
    bool isIdle() const;
    // Closes the next connection without reading it; false on timeout.
    bool hangUpOnNext() const;

private:
    peer::OwnSocket acceptNext() const;

    Sockets library_;
    peer::OwnSocket listening_{INVALID_SOCKET};
};

// The Companion's address on the loopback interface, port 4559.
sockaddr_in companionsAddress();

// Simulates the add-in's end: one connection to the Companion. Requires `Sockets`.
class Client {
public:
    // `localAddress`: one of this computer's own addresses.
    explicit Client(const char* localAddress = "127.0.0.1");

    bool isConnected() const { return isConnected_; }
    bool sendBytes(const std::string& bytes) const;
    // Waits until the Companion has closed its end; false on timeout.
    bool waitForEnd() const;

private:
    peer::OwnSocket socket_;
    bool isConnected_ = false;
};

// Sends these bytes over a new connection; true on success.
bool sendToCompanion(const std::string& bytes);

// Connects to this port of the local computer and returns the error, or 0. Requires `Sockets`.
int connectTo(unsigned short port);

// The ports open on this computer: TCP ports in the listening state and bound UDP ports, for IPv4
// and IPv6.
std::set<unsigned> openPorts();

} // namespace testing_support
