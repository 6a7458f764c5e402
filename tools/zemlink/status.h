// The state of an installation and of the programs that use it.
#pragma once

#include "tools/zemlink/facts.h"
#include "tools/zemlink/report.h"

namespace zemlink {

Report statusReport(const Facts& facts);

} // namespace zemlink
