// The framework's exceptions that the host raises are caught where it is called.
#pragma once

#include "framework/framework.h"

namespace torvapdm {

// Ends an exception quietly: its message is fetched into a buffer of 255 characters and dropped,
// and the exception object is deleted.
void discard(CException* exception);

// Calls the host. False when it raised the framework's exception, which is discarded; any other
// exception passes on.
template <class Call>
bool callHost(Call&& call)
{
    try {
        call();
        return true;
    } catch (CException* exception) {
        discard(exception);
        return false;
    }
}

} // namespace torvapdm
