// Takes the Companion's place for the hosts: its semaphore, its window and its port. Hosts then
// send notices here and append commit records to a commit file of this process.
#pragma once

#include "peer/handle.h"
#include "peer/notice_port.h"
#include "tools/zemlink/session/exchange_event.h"

#include <cstdint>
#include <stdexcept>
#include <vector>

namespace zemlink {

struct CompanionIsRunning : std::runtime_error {
    using std::runtime_error::runtime_error;
};
struct PortIsInUse : std::runtime_error {
    explicit PortIsInUse(int error)
        : std::runtime_error("port 4559 cannot be opened"), code(static_cast<std::uint32_t>(error))
    {
    }
    std::uint32_t code; // the system's
};

// For one thread.
class CompanionRole {
public:
    // Throws CompanionIsRunning or PortIsInUse; std::runtime_error when the window cannot be made.
    CompanionRole();
    ~CompanionRole();
    CompanionRole(const CompanionRole&) = delete;
    CompanionRole& operator=(const CompanionRole&) = delete;

    // The notices since the last call; waits for traffic for at most 100 ms, and handles the
    // window's messages.
    std::vector<ExchangeEvent> receive();

    // How often the Companion was started meanwhile. It finds its place taken, is told that its
    // arguments are not carried out, and ends.
    size_t refusedStarts() const { return refusedStarts_; }

private:
    static LRESULT CALLBACK handle(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    peer::OwnHandle semaphore_;
    peer::NoticeListener listener_;
    HWND window_ = nullptr;
    size_t refusedStarts_ = 0;
};

} // namespace zemlink
