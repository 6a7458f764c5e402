// Ctrl-C, Ctrl-Break and the end of the console as a signal to end in order.
#pragma once

#include "peer/handle.h"

namespace zemlink {

// While it exists, these no longer end the program; one object at a time. When the console is
// closed or the user logs off, Windows waits a few seconds until the destructor has run.
class Interruption {
public:
    Interruption();
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    // Signalled after the first of them.
    HANDLE handle() const;
    bool isRequested() const;
};

} // namespace zemlink
