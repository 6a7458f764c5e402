#include "toolpicture/numbers.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace torvapdm {

int truncated(double value)
{
    if (std::isnan(value))
        return 0;
    constexpr double farthest = farthestPixel;
    return static_cast<int>(std::clamp(value, -farthest, farthest));
}

int clampInt(int value, int low, int high)
{
    if (value < low)
        return low;
    return value > high ? high : value;
}

double radians(double degrees)
{
    return degrees * std::numbers::pi / 180.0;
}

} // namespace torvapdm
