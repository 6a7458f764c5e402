// The menus and windows that this session can still make.
#pragma once

namespace testing_support {

// How many menus can be made until the system refuses one: fewer by each menu or window that any
// program holds. All of them are let go of again.
int countFreeUserObjects();

} // namespace testing_support
