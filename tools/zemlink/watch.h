// `zemlink watch`.
#pragma once

#include "tools/zemlink/arguments.h"
#include "tools/zemlink/reports/report.h"

namespace zemlink {

// Prints a line for each event until the number or the time is reached or the user ends it. Exit
// code `problem` when fewer events came than asked for, or when the folder is missing.
Outcome watch(const Arguments& arguments);

} // namespace zemlink
