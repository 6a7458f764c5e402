// A tool of the tool data file, as a report.
#pragma once

#include "peer/tool_record.h"
#include "tools/zemlink/report.h"

namespace zemlink {

// Every value of the record but the handles of texts, which mean nothing outside the host.
Report toolReport(const companion::ToolRecord& record);

} // namespace zemlink
