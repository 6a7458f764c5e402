// A client of the test's own that sends the Companion bytes, as a host's add-in does.
#pragma once

#include <string>

#include <winsock2.h>

namespace testing_support {

// The Companion's address on the loopback interface, port 4559.
sockaddr_in companionsAddress();

// Sockets, usable for its lifetime.
class Sockets {
public:
    Sockets();
    ~Sockets();
    Sockets(const Sockets&) = delete;
    Sockets& operator=(const Sockets&) = delete;
};

// A connection to the Companion, closed with its object.
class Client {
public:
    // `localAddress`: one of the machine's own.
    explicit Client(const char* localAddress = "127.0.0.1");
    ~Client();
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    bool isConnected() const { return isConnected_; }
    bool sendBytes(const std::string& bytes) const;
    // True once the Companion has closed its end.
    bool waitForEnd() const;

private:
    SOCKET socket_;
    bool isConnected_ = false;
};

// One connection that carries these bytes; true when they were sent.
bool sendLine(const std::string& bytes);

} // namespace testing_support
