// The rules for the starts of the Companion.
#pragma once

#include "tools/zemlink/verify/addin_starts.h"
#include "tools/zemlink/verify/rules.h"

#include <cstdint>

namespace zemlink {

Rules addInStartRules();
Findings judgeStarts(const StartsSeen& seen, std::int64_t tookMs);

} // namespace zemlink
