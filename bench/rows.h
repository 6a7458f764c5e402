// What is measured, a function for each room. Each gives its rows.
#pragma once

#include "bench/report.h"

namespace bench {

using Rows = std::vector<Row>;

Rows toolExportRows(); // parts of 100, 1,000 and 10,000 operations
Rows ncQueueRows();    // the same
Rows commitRows();
Rows settingsRows();

} // namespace bench
