#include "support/user_objects.h"

#include <vector>
#include <windows.h>

namespace testing_support {

int countFreeUserObjects()
{
    std::vector<HMENU> menus;
    while (const HMENU menu = CreateMenu())
        menus.push_back(menu);
    for (const HMENU menu : menus)
        DestroyMenu(menu);
    return static_cast<int>(menus.size());
}

} // namespace testing_support
