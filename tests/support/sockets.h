// Both ends of the notice protocol on port 4559.
#pragma once

#include "peer/notice_port.h"
#include "peer/wire_constants.h"
#include "support/waiting.h"

#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>

namespace testing_support {

using Sockets = peer::SocketsLibrary;

inline peer::OwnSocket newSocket()
{
    return peer::OwnSocket(socket(AF_INET, SOCK_STREAM, IPPROTO_TCP));
}

// The Companion's address on the loopback interface, or that of another port.
inline sockaddr_in companionsAddress(unsigned short port = peer::noticePort)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    return address;
}

inline bool connects(const peer::OwnSocket& socket, const sockaddr_in& address)
{
    return connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
}

// Simulates the Companion's end: listens on the loopback address.
class LineReceiver {
public:
    // Exits with a message if the port stays in use.
    LineReceiver()
    {
        const sockaddr_in address = companionsAddress();
        // The sockets of a program that has just ended may stay open briefly.
        const bool isListening = waitUntil([&] {
            listening_ = newSocket();
            return bind(listening_.get(), reinterpret_cast<const sockaddr*>(&address),
                        sizeof address) == 0 &&
                   listen(listening_.get(), 16) == 0;
        });
        if (!isListening) {
            std::fprintf(stderr, "cannot listen on port 4559: error %d\n", WSAGetLastError());
            std::exit(99);
        }
    }

    // All bytes of the next connection until it is closed; nothing on timeout.
    std::optional<std::string> nextConnection() const
    {
        const peer::OwnSocket connection = acceptNext();
        if (!connection.isOpen())
            return std::nullopt;
        std::string bytes;
        char piece[512];
        for (int size; (size = recv(connection.get(), piece, sizeof piece, 0)) > 0;)
            bytes.append(piece, static_cast<size_t>(size));
        return bytes;
    }
    // True if no connection is waiting.
    bool isIdle() const { return !isReadable(0); }
    // Closes the next connection without reading it; false on timeout.
    bool hangUpOnNext() const { return acceptNext().isOpen(); }

private:
    bool isReadable(unsigned milliseconds) const
    {
        fd_set sockets;
        FD_ZERO(&sockets);
        FD_SET(listening_.get(), &sockets);
        timeval time = {static_cast<long>(milliseconds / 1000), 0};
        return select(0, &sockets, nullptr, nullptr, &time) > 0;
    }
    peer::OwnSocket acceptNext() const
    {
        return peer::OwnSocket(isReadable(generousMs) ? accept(listening_.get(), nullptr, nullptr)
                                                      : INVALID_SOCKET);
    }

    Sockets library_;
    peer::OwnSocket listening_{INVALID_SOCKET};
};

// Simulates the add-in's end: one connection to the Companion. Requires `Sockets`.
class Client {
public:
    // `localAddress`: one of this computer's own addresses.
    explicit Client(const char* localAddress = "127.0.0.1")
    {
        sockaddr_in address = companionsAddress();
        address.sin_addr.s_addr = inet_addr(localAddress);
        isConnected_ = connects(socket_, address);
    }

    bool isConnected() const { return isConnected_; }
    bool sendBytes(const std::string& bytes) const
    {
        const int size = static_cast<int>(bytes.size());
        return send(socket_.get(), bytes.data(), size, 0) == size;
    }
    // Waits until the Companion has closed its end; false on timeout.
    bool waitForEnd() const
    {
        char byte = 0;
        return recv(socket_.get(), &byte, 1, 0) <= 0;
    }

private:
    peer::OwnSocket socket_ = newSocket();
    bool isConnected_ = false;
};

// Sends these bytes over a new connection; true on success.
inline bool sendToCompanion(const std::string& bytes)
{
    const Client client;
    return client.isConnected() && client.sendBytes(bytes);
}

// Connects to this port of the local computer and returns the error, or 0. Requires `Sockets`.
inline int connectTo(unsigned short port)
{
    return connects(newSocket(), companionsAddress(port)) ? 0 : WSAGetLastError();
}

} // namespace testing_support
