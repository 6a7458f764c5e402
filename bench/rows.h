// The measurements, one function each.
#pragma once

#include "bench/report.h"

namespace bench {

using Rows = std::vector<Row>;

Rows toolExportRows(); // parts of 100 to 10,000 operations, see chains.h
Rows ncQueueRows();    // the same
Rows toolPictureRows();
Rows commitRows();
Rows settingsRows();
Rows startRows();
Rows listenerRows();
Rows latencyRows();
Rows hostMemoryRows();

} // namespace bench
