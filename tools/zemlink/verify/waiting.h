// Waiting for what a program does, with a bound and until the user interrupts.
#pragma once

#include <cstdint>
#include <functional>
#include <windows.h>

namespace zemlink {

// Thrown by every wait once the user has interrupted.
struct Interrupted {};

// For one thread; its window messages are handled meanwhile.
class Waiting {
public:
    // `stop`: signalled by an interruption. `boundMs`: of a wait for what should happen.
    Waiting(HANDLE stop, std::int64_t boundMs) : stop_(stop), boundMs_(boundMs) {}

    std::int64_t boundMs() const { return boundMs_; }

    // Looks every few milliseconds; false when the condition has not come true in time.
    bool until(const std::function<bool()>& condition) const { return until(condition, boundMs_); }
    bool until(const std::function<bool()>& condition, std::int64_t boundMs,
               DWORD lookEveryMs = 5) const;

    void pause(std::int64_t milliseconds) const
    {
        until([] { return false; }, milliseconds);
    }

private:
    HANDLE stop_;
    std::int64_t boundMs_;
};

// Milliseconds from a fixed point of this process's life.
std::int64_t monotonicMs();

} // namespace zemlink
