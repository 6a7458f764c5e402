// The drawing in the view: grid, stock, toolpaths and geometry from above.
#pragma once

#include "core/part.h"

#include <windows.h>

namespace standin {

void drawPart(HDC context, const RECT& area, const Part& part);

} // namespace standin
