// Whether the Companion runs.
#pragma once

#include "tools/zemlink/facts.h"

namespace zemlink {

Companion lookAtCompanion();

} // namespace zemlink
