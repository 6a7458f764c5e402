// The system's own message boxes, which the shell shows over a start that fails.
#pragma once

#include <windows.h>

namespace testing_support {

// While it lives, dialogs that appear on this thread are closed with OK at once.
class SystemDialogs {
public:
    SystemDialogs();
    ~SystemDialogs();
    SystemDialogs(const SystemDialogs&) = delete;
    SystemDialogs& operator=(const SystemDialogs&) = delete;

private:
    HHOOK hook_;
};

} // namespace testing_support
