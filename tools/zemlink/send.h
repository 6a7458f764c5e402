// The commands that send a request to a host.
#pragma once

#include "tools/zemlink/arguments.h"
#include "tools/zemlink/reports/report.h"

namespace zemlink {

// Each waits until the host has taken the request or the time is over.
Outcome sendOpen(const Arguments& arguments);
Outcome sendNew(const Arguments& arguments);
Outcome sendCheckIn(const Arguments& arguments);

} // namespace zemlink
