// Collects the facts of the installation.
#pragma once

#include "tools/zemlink/reports/facts.h"

namespace zemlink {

// Whether to create a file in temp and delete it again, and to wait up to two seconds for requests
// to be taken.
enum class Tests { skipped, made };

Facts gatherFacts(Tests tests);

Companion findCompanion();

} // namespace zemlink
