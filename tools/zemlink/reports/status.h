// The report of `zemlink status`.
#pragma once

#include "tools/zemlink/reports/facts.h"
#include "tools/zemlink/reports/report.h"

namespace zemlink {

Report statusReport(const Facts& facts);

} // namespace zemlink
