// Notices, commit records and settings as reports.
#pragma once

#include "tools/zemlink/reports/report.h"

#include <string_view>

namespace zemlink {

// The bytes of one connection to the notice port. `notice` is `setup sheet`, `commit`, `tool data`
// or `NC queue`, with its values; or `unknown`, with the bytes in hexadecimal and as text.
Report noticeReport(std::string_view bytes);

// The content of a commit file. `records`: each with its offset in the bytes (plus `offset`), id
// (null for none) and file. If present, `foreign`: offsets and sizes of bytes that are not records;
// `incomplete`: the size of an incomplete record at the end.
Report commitsReport(std::string_view bytes, size_t offset = 0);

// The four settings, each true or false.
Report settingsReport(std::string_view bytes);

} // namespace zemlink
