// Collects the facts of the installation.
#pragma once

#include "tools/zemlink/facts.h"

namespace zemlink {

enum class Temp { notTested, tested }; // whether to create a file in temp and delete it again

Facts gatherFacts(Temp temp);

Companion findCompanion();

} // namespace zemlink
