// Changes that the user makes to the open part. UI thread.
#pragma once

#include "host/import.h"

namespace standin {

// Adds a finishing pass after the last operation: the same tool, half a millimetre deeper, the path
// scaled towards its middle. False, without any change, if there is no operation.
MCCORE_API bool addFinishingPass();

} // namespace standin
