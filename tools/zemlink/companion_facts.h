// Whether the Companion runs.
#pragma once

#include "tools/zemlink/decisions/facts.h"

namespace zemlink {

Companion lookAtCompanion();

} // namespace zemlink
