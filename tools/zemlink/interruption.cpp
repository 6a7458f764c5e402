#include "tools/zemlink/interruption.h"

namespace zemlink {
namespace {

// Never closed, because a handler may still use them after the destructor.
struct Signals {
    HANDLE requested = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    HANDLE done = CreateEventW(nullptr, TRUE, FALSE, nullptr);
};

const Signals& signals()
{
    static const Signals made;
    return made;
}

// On a thread of the system.
BOOL WINAPI handleControl(DWORD control)
{
    SetEvent(signals().requested);
    // The process ends as soon as the handler of these returns.
    if (control != CTRL_C_EVENT && control != CTRL_BREAK_EVENT)
        WaitForSingleObject(signals().done, INFINITE);
    return TRUE;
}

} // namespace

Interruption::Interruption()
{
    ResetEvent(signals().requested);
    ResetEvent(signals().done);
    SetConsoleCtrlHandler(handleControl, TRUE);
}

Interruption::~Interruption()
{
    // The handler may be waiting for it; then the process ends when the handler returns.
    SetEvent(signals().done);
    SetConsoleCtrlHandler(handleControl, FALSE);
}

HANDLE Interruption::handle() const
{
    return signals().requested;
}

bool Interruption::isRequested() const
{
    return WaitForSingleObject(handle(), 0) == WAIT_OBJECT_0;
}

} // namespace zemlink
