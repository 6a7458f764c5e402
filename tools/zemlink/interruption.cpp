#include "tools/zemlink/interruption.h"

namespace zemlink {

Interruption* Interruption::current_ = nullptr;

Interruption::Interruption()
    : requested_(CreateEventW(nullptr, TRUE, FALSE, nullptr)),
      done_(CreateEventW(nullptr, TRUE, FALSE, nullptr))
{
    current_ = this;
    SetConsoleCtrlHandler(handleControl, TRUE);
}

Interruption::~Interruption()
{
    // The handler may be waiting for it; then the process ends when the handler returns.
    SetEvent(done_.get());
    SetConsoleCtrlHandler(handleControl, FALSE);
}

bool Interruption::isRequested() const
{
    return WaitForSingleObject(requested_.get(), 0) == WAIT_OBJECT_0;
}

// On a thread of the system.
BOOL WINAPI Interruption::handleControl(DWORD control)
{
    SetEvent(current_->requested_.get());
    // The process ends as soon as the handler of these returns.
    if (control != CTRL_C_EVENT && control != CTRL_BREAK_EVENT)
        WaitForSingleObject(current_->done_.get(), INFINITE);
    return TRUE;
}

} // namespace zemlink
