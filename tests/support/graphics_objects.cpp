#include "support/graphics_objects.h"

#include <vector>
#include <windows.h>

namespace testing_support {

int countFreeGraphicsObjects()
{
    std::vector<HPEN> pens;
    while (const HPEN pen = CreatePen(PS_SOLID, 1, RGB(1, 2, 3)))
        pens.push_back(pen);
    for (const HPEN pen : pens)
        DeleteObject(pen);
    return static_cast<int>(pens.size());
}

} // namespace testing_support
