// Pictures of cutting tools for the Companion.
#pragma once

#include "toolpicture/dimensions.h"

#include <string>

namespace torvapdm {

// Draws the tool's side view and saves it as toolPicturePath(imageId), over any earlier one. A tool
// or a size that has no picture, and whatever else fails, leaves what lies there. Any thread, once
// the installation folder is known.
void drawTool(const ToolArguments& arguments, std::int32_t imageId);

// toolPicturePath(-3) is "C:\TORVA\ZEM\temp\toolimage--3.bmp" under the default installation
// folder.
std::wstring toolPicturePath(std::int32_t imageId);

} // namespace torvapdm
