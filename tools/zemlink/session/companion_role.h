// Takes the Companion's place for the hosts: its semaphore, its window and its port. Hosts then
// send notices here and append commit records to a commit file of this process.
#pragma once

#include "peer/handle.h"
#include "peer/notice_port.h"
#include "tools/zemlink/session/exchange_event.h"

#include <string>
#include <vector>

namespace zemlink {

// For one thread.
class CompanionRole {
public:
    // Throws std::runtime_error, with the cause, when the Companion is running or the port is
    // taken.
    CompanionRole();
    ~CompanionRole();
    CompanionRole(const CompanionRole&) = delete;
    CompanionRole& operator=(const CompanionRole&) = delete;

    // The notices since the last call; waits for traffic for at most 100 ms, and handles the
    // window's messages.
    std::vector<ExchangeEvent> receive();

private:
    peer::OwnHandle semaphore_;
    peer::NoticeListener listener_;
    HWND window_ = nullptr;
};

} // namespace zemlink
