#include "support/line_client.h"

namespace testing_support {

sockaddr_in companionsAddress()
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(4559);
    return address;
}

Sockets::Sockets()
{
    WSADATA data{};
    WSAStartup(MAKEWORD(2, 2), &data);
}

Sockets::~Sockets()
{
    WSACleanup();
}

Client::Client(const char* localAddress) : socket_(socket(AF_INET, SOCK_STREAM, IPPROTO_TCP))
{
    sockaddr_in address = companionsAddress();
    address.sin_addr.s_addr = inet_addr(localAddress);
    isConnected_ =
        connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
}

Client::~Client()
{
    closesocket(socket_);
}

bool Client::sendBytes(const std::string& bytes) const
{
    const int size = static_cast<int>(bytes.size());
    return send(socket_, bytes.data(), size, 0) == size;
}

bool Client::waitForEnd() const
{
    char byte = 0;
    return recv(socket_, &byte, 1, 0) <= 0;
}

bool sendLine(const std::string& bytes)
{
    const Client client;
    return client.isConnected() && client.sendBytes(bytes);
}

} // namespace testing_support
