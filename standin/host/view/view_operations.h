// The list in the view: the operations in order, under the names of their groups, each with its
// tool and its time.
#pragma once

#include "core/part.h"

#include <windows.h>

namespace standin {

// Draws the list from row `firstRow` on, or the last page if that is beyond it.
void drawOperations(HDC context, const RECT& area, const Part& part, int firstRow);

// The number of rows, headings included.
int operationRowCount(const Part& part);

} // namespace standin
