// `zemlink replay`.
#pragma once

#include "tools/zemlink/arguments.h"
#include "tools/zemlink/reports/report.h"

namespace zemlink {

// Shows each event as it happens and then what was carried out and what differs; the exit code is
// `problem` when something was not carried out or differs.
Outcome replayRecording(const Arguments& arguments);

} // namespace zemlink
