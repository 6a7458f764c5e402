// Calls into the host (`askHost`, `callHost`), and exception barriers for the functions that the
// host and Windows call (`barrier`, `barrierExceptFor`).
#pragma once

#include "framework/framework.h"

namespace torvapdm {

// Ends a caught framework exception: fetches its message into a buffer of 255 characters, drops it
// and deletes the exception.
void discard(CException* exception);

// Calls the host and returns the result of `call`, or `fallback` when the host raised the
// framework's exception, which is discarded. Other exceptions propagate.
template <class Result, class Call>
Result askHost(Result fallback, Call&& call)
{
    try {
        return call();
    } catch (CException* exception) {
        discard(exception);
        return fallback;
    }
}

// The same for a call without a result; false when the host raised the framework's exception.
template <class Call>
bool callHost(Call&& call)
{
    return askHost(
        false,
        [&] {
            call();
            return true;
        });
}

// Returns the result of `body`, or `defaultResult` when it throws. Shows nothing.
template <class Result, class Body>
Result barrier(Result defaultResult, Body&& body) noexcept
{
    try {
        return body();
    } catch (CException* exception) {
        discard(exception);
    } catch (...) {
    }
    return defaultResult;
}

// The same, but an exception of type `Escaping` propagates to the caller.
template <class Escaping, class Result, class Body>
Result barrierExceptFor(Result defaultResult, Body&& body)
{
    try {
        return body();
    } catch (Escaping) {
        throw;
    } catch (...) {
        // Rethrows the exception inside the barrier.
        return barrier(defaultResult, []() -> Result { throw; });
    }
}

} // namespace torvapdm
