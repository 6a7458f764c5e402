// Carries out a command.
#pragma once

#include "tools/zemlink/arguments.h"

namespace zemlink {

// Prints what there is to say and gives the program's exit code.
int carryOut(const Arguments& arguments);

} // namespace zemlink
