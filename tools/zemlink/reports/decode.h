// The report of `zemlink decode`.
#pragma once

#include "tools/zemlink/reports/exchange_kind.h"
#include "tools/zemlink/reports/report.h"

#include <string_view>

namespace zemlink {

// Parses the file's bytes as that kind. The exit code is `problem` when the reader of such a file
// would not accept all of it.
Outcome decode(ExchangeKind kind, std::string_view bytes);

} // namespace zemlink
