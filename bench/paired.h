// Timing in pairs: what the add-in does, and the same platform calls made bare, in turns, so that a
// noisy machine disturbs both alike.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bench {

using Work = std::function<void()>;
using Timing = std::function<double()>; // does some work and gives its time in microseconds

// The middle of some values and the middle half around it.
struct Middle {
    double median = 0;
    double lower = 0; // a quarter of the values lie below
    double upper = 0; // a quarter lie above
};

Middle middleOf(std::vector<double> values);

// The value below which this share of the values lies; 0 when there are none.
double quantileOf(std::vector<double> values, double share);

struct Pair {
    Middle ratio; // ours to bare, round by round
    Middle ours;  // microseconds a call
    Middle bare;  // microseconds a call
    size_t rounds = 0;
};

// Has both timed in turns, for so many rounds; one round more comes first and does not count. The
// turns change places from round to round.
Pair measureInPairs(size_t rounds, const Timing& ours, const Timing& bare);

// The same for works that are called `calls` times in a row, timed as one.
Pair timeInPairs(size_t rounds, size_t calls, const Work& ours, const Work& bare);

// The time of one call in microseconds.
double timeOnce(const Work& work);

} // namespace bench
