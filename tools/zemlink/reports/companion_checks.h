// The running Companion, the commits for it and its port.
#pragma once

#include "tools/zemlink/reports/check.h"

namespace zemlink {

std::vector<Check> companionChecks();

} // namespace zemlink
