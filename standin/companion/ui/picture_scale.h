// Scales pictures down without losing thin lines.
#pragma once

#include "peer/bitmap_file.h"

namespace companion {

// The picture in that size: each pixel is the mean of those it replaces, or the nearest one where
// the picture becomes larger. Empty when the picture or the size is empty.
peer::Pixels scaled(const peer::Pixels& picture, int width, int height);

} // namespace companion
