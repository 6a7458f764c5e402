// The picture's small arithmetic: a floating-point number and three whole ones.
#include "fuzz/differences.h"
#include "fuzz/input.h"
#include "fuzz/targets.h"
#include "toolpicture/numbers.h"

namespace fuzzing {

namespace {

int plainTruncated(double value)
{
    constexpr double farthest = 134217727; // 2^27 - 1
    if (value != value)
        return 0;
    if (value >= farthest)
        return 134217727;
    return value <= -farthest ? -134217727 : static_cast<int>(value);
}

std::string checkNumbers(std::string_view bytes)
{
    Input input(bytes);
    const auto real = input.number<double>();
    const auto value = input.number<std::int32_t>();
    const auto low = input.number<std::int32_t>();
    const auto high = input.number<std::int32_t>();
    const int clamped = value < low ? low : (value > high ? high : value);
    Differences differences;
    differences.compare("truncated", torvapdm::truncated(real), plainTruncated(real));
    differences.compare("clampInt", torvapdm::clampInt(value, low, high), clamped);
    differences.compare("radians", torvapdm::radians(real), real * 3.14159265358979323846 / 180);
    return differences.text();
}

std::string numbers(double real, int value, int low, int high)
{
    return raw(real) + raw(value) + raw(low) + raw(high);
}

} // namespace

Target numbersTarget()
{
    return {"numbers",
            checkNumbers,
            {numbers(1.9, 5, 1, 9), numbers(-1.9, 5, 9, 1), numbers(1e300, -5, 0, 32767),
             numbers(134217727.5, 7, 7, 7), numbers(-1e300 * 1e300, 2147483647, 0, 1),
             numbers(1e300 * 1e300 - 1e300 * 1e300, 0, -1, 1)},
            {raw(90.0), raw(1e9), raw(-0.0), raw(2147483647)}};
}

} // namespace fuzzing
