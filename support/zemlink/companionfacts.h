// Whether the Companion runs.
#pragma once

#include "zemlink/decisions/facts.h"

namespace zemlink {

Companion lookAtCompanion();

} // namespace zemlink
