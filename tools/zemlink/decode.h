// What an exchange file says.
#pragma once

#include "tools/zemlink/exchange_kind.h"
#include "tools/zemlink/report.h"

#include <string_view>

namespace zemlink {

// The file's bytes, taken apart as that kind. The exit code is `trouble` when something in it is
// not as its reader expects.
Outcome decode(ExchangeKind kind, std::string_view bytes);

} // namespace zemlink
