// Pictures of cutting tools, for the Companion.
#pragma once

#include "toolpicture/dimensions.h"

namespace torvapdm {

// Draws the tool's side view and saves it as toolPicturePath(imageId), in place of an earlier one.
// A tool or a size that cannot be drawn, and any failure, leaves an earlier picture as it is. Any
// thread, after the installation folder has been read.
void drawTool(const ToolArguments& arguments, std::int32_t imageId);

} // namespace torvapdm
