// `zemlink record`.
#pragma once

#include "tools/zemlink/arguments.h"
#include "tools/zemlink/reports/report.h"

namespace zemlink {

// Records everything that `watch` shows, with its bytes, until the time is over or the user ends
// it. The file is written again while there is something new, so that little is lost if the
// program is ended. Exit code `problem` when the file exists already or cannot be written at the
// start or the end, when there were too many bytes, or when events were lost.
Outcome record(const Arguments& arguments);

} // namespace zemlink
