// A connection to port 4559, as the hosts' add-in makes one for each notice.
#pragma once

#include "peer/handle.h"

#include <string_view>

namespace zemlink {

// Requires Winsock.
class NoticeConnection {
public:
    NoticeConnection();

    bool isOpen() const { return isOpen_; }
    // False when not all bytes were sent.
    bool send(std::string_view bytes) const;
    void close() { socket_ = peer::OwnSocket(INVALID_SOCKET); }
    // Ends the connection as when the sender's process ends.
    void reset();

private:
    peer::OwnSocket socket_;
    bool isOpen_;
};

// Sends these bytes over a connection of their own. False when it cannot be made.
bool sendNotice(std::string_view bytes);

} // namespace zemlink
