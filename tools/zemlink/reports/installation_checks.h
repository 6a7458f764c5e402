// The installation folder, its content and its settings; what the add-in's setup installed.
#pragma once

#include "tools/zemlink/reports/check.h"

namespace zemlink {

std::vector<Check> installationChecks();

} // namespace zemlink
