#include "support/ports.h"

#include <winsock2.h>

namespace testing_support {

int connectTo(unsigned short port)
{
    const SOCKET caller = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    const int result = connect(caller, reinterpret_cast<const sockaddr*>(&address), sizeof address);
    const int error = result == 0 ? 0 : WSAGetLastError();
    closesocket(caller);
    return error;
}

} // namespace testing_support
