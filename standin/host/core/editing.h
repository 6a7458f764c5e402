// Changes that the host's user makes to the open part. User-interface thread.
#pragma once

#include "host/import.h"

namespace standin {

// Adds a finishing pass behind the last operation: the same tool, half a millimetre deeper, its
// path drawn in towards its middle. False, with the part as it was, when there is no operation.
MCCORE_API bool addFinishingPass();

} // namespace standin
