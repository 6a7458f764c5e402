// The environment of the measured code: a host, an installation folder, a listening Companion.
#pragma once

#include "support/installation.h"

#include <atomic>
#include <string>
#include <thread>
#include <winsock2.h>

namespace bench {

// The one installation folder of the run.
const testing_support::Installation& installation();

// Puts a part with this number of operations, each with its own NCI name and tool, into the host.
void putPart(size_t operations);

// Receives and discards the notices sent to port 4559 during its lifetime.
class LineTaker {
public:
    LineTaker();
    ~LineTaker();
    LineTaker(const LineTaker&) = delete;
    LineTaker& operator=(const LineTaker&) = delete;

private:
    SOCKET listening_;
    std::thread thread_;
};

// The system calls of a sent notice.
void sendBare(const std::string& line);

// Ends the program with the text unless the condition holds.
void require(bool holds, const char* what);

} // namespace bench
