// The running hosts and their add-ins.
#pragma once

#include "tools/zemlink/reports/check.h"

namespace zemlink {

std::vector<Check> hostChecks();

} // namespace zemlink
