// Arithmetic for the tool picture. No platform header.
#pragma once

namespace torvapdm {

// The largest coordinate that a graphics call takes.
constexpr int farthestPixel = (1 << 27) - 1;

// The value truncated towards zero. Defined for every double: a value beyond the farthest pixel, in
// either direction, becomes that pixel, and NaN becomes 0, so that sums of a few such values fit
// into an int.
int truncated(double value);

// `low` when the value is below it, else `high` when it is above that, else the value. Defined also
// when `low` is above `high`: a value below `low` then becomes `low`, any other `high`.
int clampInt(int value, int low, int high);

// The angle in radians.
double radians(double degrees);

} // namespace torvapdm
