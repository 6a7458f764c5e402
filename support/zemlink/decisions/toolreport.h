// A tool of the tool data file, as a report.
#pragma once

#include "decisions/toolrecord.h"
#include "zemlink/decisions/report.h"

namespace zemlink {

// Every value of the record but the handles of texts, which mean nothing outside the host.
Report toolReport(const companion::ToolRecord& record);

} // namespace zemlink
