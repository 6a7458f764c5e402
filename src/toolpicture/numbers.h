// The small arithmetic that the tool picture is made with. No platform header: these are decisions.
#pragma once

namespace torvapdm {

// The largest coordinate that a graphics call takes.
constexpr int farthestPixel = (1 << 27) - 1;

// The value without its fraction, towards zero. Defined for every double: what lies beyond the
// farthest pixel, on either side, becomes that pixel, and what is no number becomes 0. A few such
// values can be added up without leaving the range of an int.
int truncated(double value);

// `low` when the value is below it, else `high` when it is above that, else the value. Defined also
// when `low` lies above `high`: a value below `low` then gives `low`, any other gives `high`.
int clampInt(int value, int low, int high);

// The angle in radians.
double radians(double degrees);

} // namespace torvapdm
