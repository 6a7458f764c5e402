// RAII owners of system handles. Include it before <windows.h>.
#pragma once

#include <memory>
#include <utility>
#include <winsock2.h>
#include <windows.h>

namespace peer {

struct HandleCloser {
    using pointer = HANDLE;
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};

// A kernel handle; empty is null.
using OwnHandle = std::unique_ptr<void, HandleCloser>;

// Owns what CreateFileW returned. INVALID_HANDLE_VALUE becomes null.
inline OwnHandle ownFile(HANDLE file)
{
    return OwnHandle(file == INVALID_HANDLE_VALUE ? nullptr : file);
}

// A socket; empty is INVALID_SOCKET.
class OwnSocket {
public:
    explicit OwnSocket(SOCKET value) : value_(value) {}
    OwnSocket(OwnSocket&& other) noexcept : value_(std::exchange(other.value_, INVALID_SOCKET)) {}
    OwnSocket& operator=(OwnSocket&& other) noexcept
    {
        std::swap(value_, other.value_);
        return *this;
    }
    ~OwnSocket()
    {
        if (isOpen())
            closesocket(value_);
    }
    SOCKET get() const { return value_; }
    bool isOpen() const { return value_ != INVALID_SOCKET; }

private:
    SOCKET value_;
};

// Winsock, usable as long as this object exists.
struct SocketsLibrary {
    SocketsLibrary()
    {
        WSADATA data{};
        WSAStartup(MAKEWORD(2, 2), &data);
    }
    ~SocketsLibrary() { WSACleanup(); }
    SocketsLibrary(const SocketsLibrary&) = delete;
    SocketsLibrary& operator=(const SocketsLibrary&) = delete;
};

} // namespace peer
