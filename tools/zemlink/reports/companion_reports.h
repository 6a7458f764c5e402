// The Companion's own files as reports: its event log, bookmarks and working copies.
#pragma once

#include "peer/companion_log.h"
#include "peer/working_copies_file.h"
#include "tools/zemlink/reports/report.h"

#include <string_view>

namespace zemlink {

// `time`, `event` and the fields under their names, each a number if it is one, else a text.
Report eventReport(const peer::CompanionEvent& event);

Report workingCopyReport(const peer::WorkingCopy& copy);

Outcome decodeBookmark(std::string_view bytes);

} // namespace zemlink
