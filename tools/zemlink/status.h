// The report of `zemlink status`.
#pragma once

#include "tools/zemlink/facts.h"
#include "tools/zemlink/report.h"

namespace zemlink {

Report statusReport(const Facts& facts);

} // namespace zemlink
