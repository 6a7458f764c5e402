// A console of the test's own, for tests of Ctrl-C.
#pragma once

#include <windows.h>

namespace testing_support {

// Programs started while it exists share it.
class OwnConsole {
public:
    OwnConsole()
    {
        FreeConsole();
        AllocConsole();
        ShowWindow(GetConsoleWindow(), SW_HIDE);
    }
    ~OwnConsole()
    {
        SetConsoleCtrlHandler(nullptr, FALSE);
        FreeConsole();
    }
    OwnConsole(const OwnConsole&) = delete;
    OwnConsole& operator=(const OwnConsole&) = delete;

    // For all its programs but the test itself.
    void pressCtrlC() const
    {
        SetConsoleCtrlHandler(nullptr, TRUE);
        GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0);
    }
};

} // namespace testing_support
