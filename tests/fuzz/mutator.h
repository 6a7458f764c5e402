// Creates inputs from seeds; the same random seed gives the same inputs.
#pragma once

#include "fuzz/random.h"

#include <string>
#include <vector>

namespace fuzzing {

struct Material {
    const std::vector<std::string>& seeds;
    const std::vector<std::string>& tokens;
};

// Returns a seed or random bytes with a few changes: bits flipped, bytes inserted, pieces removed,
// duplicated or copied from another seed, tokens and limit values inserted.
std::string mutated(const Material& material, Random& random);

} // namespace fuzzing
