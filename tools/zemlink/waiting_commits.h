// The records of a commit request file, as a report.
#pragma once

#include "tools/zemlink/report.h"

#include <string_view>

namespace zemlink {

// `records`, each with its place in the bytes (plus `offset`), id (null for none) and file, and
// where there are any, `foreign`: the places and sizes of bytes that are no record, and
// `incomplete`: how many bytes of a record that is not whole yet stand at the end.
Report commitsReport(std::string_view bytes, size_t offset = 0);

} // namespace zemlink
