// The steps of loads as reports.
#pragma once

#include "peer/debug_log.h"
#include "tools/zemlink/reports/report.h"

#include <string>
#include <string_view>

namespace zemlink {

// The file, whether its load is finished, and its last step with its meaning.
Report loadReport(const peer::LoggedLoad& load);

// What each number in the log means.
Report stepsReport();

// What one line of the log means: `step`, `file` and `reached`, or else no step and its `text`.
Report stepReport(std::string_view line);

// What the load has reached; for step 0 that it has not begun.
std::string reachedText(const peer::LoggedLoad& load);

} // namespace zemlink
