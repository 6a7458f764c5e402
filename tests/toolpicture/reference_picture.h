// A second, straightforward implementation of the tool picture, for the tests. It works on pixels
// in memory; only the outline is drawn by GDI.
#pragma once

#include "support/raster.h"
#include "toolpicture/dimensions.h"

namespace reference {

// All lengths must be finite, and the outline within GDI's coordinate range.
testing_support::Raster toolPicture(const torvapdm::ToolArguments& arguments);

} // namespace reference
