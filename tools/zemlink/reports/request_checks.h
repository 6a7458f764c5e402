// The command files, and the requests that hosts have taken.
#pragma once

#include "tools/zemlink/reports/check.h"

namespace zemlink {

std::vector<Check> requestChecks();

} // namespace zemlink
