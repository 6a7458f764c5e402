// What the measured code works in: a host, an installation folder, a Companion that listens.
#pragma once

#include "support/installation.h"

#include <atomic>
#include <string>
#include <thread>
#include <winsock2.h>

namespace bench {

// The one installation folder of the run.
const testing_support::Installation& installation();

// A part of so many operations, each with its own NCI name and tool, in the host.
void putPart(size_t operations);

// Takes and drops the lines that are sent to port 4559 while it lives.
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

// The platform calls of a sent line, made bare.
void sendBare(const std::string& line);

// What a measurement relies on; ends the program with the text when it does not hold.
void require(bool holds, const char* what);

} // namespace bench
