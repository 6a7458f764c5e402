// Gathers what there is to see of the installation.
#pragma once

#include "tools/zemlink/facts.h"

namespace zemlink {

enum class Temp { isLeftAlone, isTried }; // whether a file is made in temp, and removed again

Facts gatherFacts(Temp temp);

} // namespace zemlink
