#include "bench/surroundings.h"

#include "control.h"
#include "support/bytes.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace bench {

namespace {

constexpr u_short port = 4559;

std::string partText(size_t operations)
{
    std::string text = "mastercam part 1\n\n[plane]\nid = 1\nname = Top\n\n"
                       "[group]\nid = 1\nname = Mill\n\n[group]\nid = 2\nparent = 1\nname = Side\n";
    for (size_t i = 1; i <= operations; ++i) {
        const std::string number = std::to_string(i);
        const std::string tool = std::to_string(i % 50 + 1);
        text += "\n[operation]\nid = " + number + "\ngroup = 2\ntype = 2\ntool-plane = 1\n" +
                "construction-plane = 1\ndepth = -" + number + ".25\nnc-name = C:\\NC\\P" + number +
                ".NC\nnci-name = C:\\NC\\P" + number + ".nci\ntool.number = " + tool +
                "\ntool.diameter = " + tool + ".5\ntool.feed-rate = 1234.5\n" +
                "tool.comment = End mill " + tool + "\ncycle-time = 12.75\n";
    }
    for (int i = 1; i <= 50; ++i)
        text += "\n[tool]\nnumber = " + std::to_string(i) + "\noverall-length = 79.5\n" +
                "flute-length = 47.25\nspindle-speed = 2800\nfeed-rate = 1234.5\n";
    return text;
}

void takeLines(SOCKET listening)
{
    for (SOCKET one; (one = accept(listening, nullptr, nullptr)) != INVALID_SOCKET;) {
        char bytes[1024];
        while (recv(one, bytes, sizeof bytes, 0) > 0)
            ;
        closesocket(one);
    }
}

} // namespace

const testing_support::Installation& installation()
{
    static const testing_support::Installation folder;
    return folder;
}

void putPart(size_t operations)
{
    const std::wstring path = installation().path(L"bench.mcam");
    testing_support::writeBytes(path, partText(operations));
    require(standin::putPart(path), "the host takes the part");
}

LineTaker::LineTaker() : listening_(socket(AF_INET, SOCK_STREAM, IPPROTO_TCP))
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    require(bind(listening_, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0 &&
                listen(listening_, 64) == 0,
            "port 4559 is free");
    thread_ = std::thread(takeLines, listening_);
}

LineTaker::~LineTaker()
{
    closesocket(listening_);
    thread_.join();
}

void sendBare(const std::string& line)
{
    static char buffer[1024];
    WSADATA data;
    WSAStartup(MAKEWORD(2, 2), &data);
    const SOCKET connection = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
    sockaddr_in server{};
    server.sin_family = AF_INET;
    server.sin_port = htons(port);
    server.sin_addr.s_addr = inet_addr("");
    if (const hostent* const entry = gethostbyname(""))
        std::memcpy(&server.sin_addr, entry->h_addr_list[0], sizeof server.sin_addr);
    connect(connection, reinterpret_cast<const sockaddr*>(&server), sizeof server);
    std::memcpy(buffer, line.data(), line.size());
    send(connection, buffer, static_cast<int>(line.size()), 0);
    closesocket(connection);
    WSACleanup();
}

void require(bool holds, const char* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "cannot measure: it is required that %s\n", what);
    std::exit(1);
}

} // namespace bench
