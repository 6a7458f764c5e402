// The thin shell at every edge where the system or the host calls the add-in.
#pragma once

#include "link/host_exceptions.h"

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

} // namespace torvapdm
