// The tool picture once more, for the tests: one plain run through all of its steps, over pixels in
// memory. Only the outline is drawn by the system, as the one thing that only it decides.
#pragma once

#include "support/raster.h"
#include "toolpicture/dimensions.h"

namespace reference {

// For a tool of finite lengths whose outline a bitmap's calls can draw.
testing_support::Raster toolPicture(const torvapdm::ToolArguments& arguments);

} // namespace reference
