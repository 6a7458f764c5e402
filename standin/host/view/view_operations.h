// The list part of the view: the operations in order, under the names of their groups, each with
// its tool and its time.
#pragma once

#include "core/part.h"

#include <windows.h>

namespace standin {

// Draws the list from its row `firstRow` on; a row behind the last page counts as the last page's.
void drawOperations(HDC context, const RECT& area, const Part& part, int firstRow);

// So many rows the list has, headings included.
int operationRowCount(const Part& part);

} // namespace standin
