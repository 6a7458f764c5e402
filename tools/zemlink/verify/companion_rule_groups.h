// The groups of rules for a Companion. The checks of a group depend on those before it.
#pragma once

#include "tools/zemlink/verify/companion_stage.h"

namespace zemlink {

CheckedRules startRules();
CheckedRules commandLineRules();
CheckedRules commitRules();
CheckedRules noticeRules();
CheckedRules requestRules();
// How it ends, starts again after that, and is closed.
CheckedRules endRules();

} // namespace zemlink
