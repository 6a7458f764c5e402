// The library that ships, in the test's own process: between the stand-in host's libraries and a
// Companion of which only the marks are there.
#pragma once

#include "support/companion_double.h"
#include "support/installation.h"
#include "support/sockets.h"
#include "support/waiting.h"

#include <string>

namespace testing_support {

struct LibraryCall {
    std::string name;
    int argument = 0;
    const wchar_t* menuItem = L""; // chosen in the menu that the call opens; empty for none
    int lines = 0;                 // that it sends to the Companion
};

// What of a running Companion the add-in can find.
enum class CompanionMarks { none, semaphore, semaphoreAndWindow };

class CalledLibrary {
public:
    // Opens the add-in, with a part in the host.
    explicit CalledLibrary(CompanionMarks marks = CompanionMarks::semaphoreAndWindow);
    ~CalledLibrary();
    CalledLibrary(const CalledLibrary&) = delete;
    CalledLibrary& operator=(const CalledLibrary&) = delete;

    // Makes the call and takes its lines. A check-out waits until the last one is a second ago: its
    // file is named after the second.
    void make(const LibraryCall& call);
    // Writes an open request with this machine-settings file and waits until it is carried out.
    void requestPart(int id, const std::string& machineSettings);

private:
    Installation installation_;
    LineReceiver receiver_;
    CompanionDouble companion_;
    unsigned long long checkedOutAt_ = 0; // milliseconds
};

} // namespace testing_support
