// Inputs made of seeds: the same ones for the same seed of the random numbers.
#pragma once

#include "fuzz/random.h"

#include <string>
#include <vector>

namespace fuzzing {

struct Material {
    const std::vector<std::string>& seeds;
    const std::vector<std::string>& tokens;
};

// A seed, or random bytes, changed in a few places: bits turned, bytes put in, pieces lost, doubled
// or taken from another seed, tokens and numbers at a limit put in.
std::string mutated(const Material& material, Random& random);

} // namespace fuzzing
