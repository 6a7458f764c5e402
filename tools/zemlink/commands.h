// Carries out the commands.
#pragma once

#include "tools/zemlink/arguments.h"

namespace zemlink {

// Prints the result and returns the program's exit code.
int carryOut(const Arguments& arguments);

} // namespace zemlink
