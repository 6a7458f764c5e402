// The doubles that arithmetic does not expect.
#pragma once

#include <limits>

namespace testing_support {

inline constexpr double infinity = std::numeric_limits<double>::infinity();
inline constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

} // namespace testing_support
