// A line that arrived on the port, as a report.
#pragma once

#include "tools/zemlink/report.h"

#include <string_view>

namespace zemlink {

// `notice`: `setup sheet`, `commit`, `tool data` or `NC queue`, with what it says; of anything else
// `unknown`, with its bytes in hexadecimal digits and their text.
Report noticeReport(std::string_view bytes);

} // namespace zemlink
