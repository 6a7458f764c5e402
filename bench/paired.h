// Paired timing: the add-in's work and the same system calls without it, alternating, so that a
// noisy machine affects both equally.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bench {

using Work = std::function<void()>;
using Timing = std::function<double()>; // does some work and gives its time in microseconds

// The median of some values and their quartiles.
struct Middle {
    double median = 0;
    double lower = 0; // first quartile
    double upper = 0; // third quartile
};

Middle middleOf(std::vector<double> values);

// The quantile at this share of the values; 0 when there are none.
double quantileOf(std::vector<double> values, double share);

struct Pair {
    Middle ratio; // ours to bare, per round
    Middle ours;  // microseconds per call
    Middle bare;  // microseconds per call
    size_t rounds = 0;
};

// Times both alternately for this number of rounds after one uncounted round. The order changes
// from round to round.
Pair measureInPairs(size_t rounds, const Timing& ours, const Timing& bare);

// The same for work that is called `calls` times in a row and timed as a whole.
Pair timeInPairs(size_t rounds, size_t calls, const Work& ours, const Work& bare);

// The time of one call in microseconds.
double timeOnce(const Work& work);

} // namespace bench
