// The drawing part of the view: grid, stock, toolpaths, geometry, seen from above.
#pragma once

#include "core/part.h"

#include <windows.h>

namespace standin {

void drawPart(HDC context, const RECT& area, const Part& part);

} // namespace standin
