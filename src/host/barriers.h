// The thin shell at every edge where the system or the host calls the add-in.
#pragma once

#include "host/host_exceptions.h"

#include <exception>

namespace torvapdm {

// Runs `body` and gives its result; gives `neutral` when an exception ended it. Nothing is shown:
// the operation quietly did nothing more.
template <class Result, class Body>
Result atEdge(Result neutral, Body&& body) noexcept
{
    try {
        return body();
    } catch (CException* exception) {
        discard(exception);
    } catch (...) {
    }
    return neutral;
}

// The same, but an exception of this type passes on to the caller.
template <class Escaping, class Result, class Body>
Result atEdgeLetting(Result neutral, Body&& body)
{
    std::exception_ptr escaped;
    const Result result = atEdge(neutral, [&] {
        try {
            return body();
        } catch (Escaping) {
            escaped = std::current_exception();
            return neutral;
        }
    });
    if (escaped)
        std::rethrow_exception(escaped);
    return result;
}

} // namespace torvapdm
