#include "tools/zemlink/verify/notice_connection.h"

#include "peer/notice_port.h"

namespace zemlink {
namespace {

bool connectToCompanion(SOCKET socket)
{
    const sockaddr_in target = peer::hostsTarget();
    return connect(socket, reinterpret_cast<const sockaddr*>(&target), sizeof target) == 0;
}

// Each piece is sent at once.
void sendWithoutDelay(SOCKET socket)
{
    const BOOL isOn = TRUE;
    setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&isOn), sizeof isOn);
}

} // namespace

NoticeConnection::NoticeConnection()
    : socket_(socket(AF_INET, SOCK_STREAM, IPPROTO_TCP)),
      isOpen_(socket_.isOpen() && connectToCompanion(socket_.get()))
{
    sendWithoutDelay(socket_.get());
}

bool NoticeConnection::send(std::string_view bytes) const
{
    const int size = static_cast<int>(bytes.size());
    return isOpen_ && ::send(socket_.get(), bytes.data(), size, 0) == size;
}

void NoticeConnection::reset()
{
    const linger atOnce{1, 0};
    setsockopt(socket_.get(), SOL_SOCKET, SO_LINGER, reinterpret_cast<const char*>(&atOnce),
               sizeof atOnce);
    close();
}

bool sendNotice(std::string_view bytes)
{
    const NoticeConnection connection;
    return connection.send(bytes);
}

} // namespace zemlink
