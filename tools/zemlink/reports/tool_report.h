// A record of the tool data file as a report.
#pragma once

#include "peer/tool_record.h"
#include "tools/zemlink/reports/report.h"

namespace zemlink {

// Every value of the record except the addresses, which have no meaning outside the host.
Report toolReport(const peer::ToolRecord& record);

} // namespace zemlink
