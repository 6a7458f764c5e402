// Changes that the user makes to the open part. UI thread.
#pragma once

#include "host/import.h"

#include <optional>

namespace standin {

// Adds a finishing pass after the last operation and returns its id: a contour like the last
// contour with an end mill, half a millimetre deeper, the path scaled towards its middle. Without
// such a contour it follows another milled path. Nothing, without any change, if the part has only
// holes.
MCCORE_API std::optional<int> addFinishingPass();

} // namespace standin
