// The rules for the start of the add-in and for the requests that it takes.
#pragma once

#include "tools/zemlink/verify/addin_requests.h"
#include "tools/zemlink/verify/rules.h"

#include <cstdint>

namespace zemlink {

Rules addInRequestRules();
Findings judgeRequests(const RequestsSeen& seen, std::int64_t tookMs);

} // namespace zemlink
