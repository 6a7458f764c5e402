// Timing in pairs: what the add-in does, and the same platform calls made bare, in turns, so that a
// noisy machine disturbs both alike.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bench {

using Work = std::function<void()>;

// The middle of some values and the middle half around it.
struct Middle {
    double median = 0;
    double lower = 0; // a quarter of the values lie below
    double upper = 0; // a quarter lie above
};

Middle middleOf(std::vector<double> values);

struct Pair {
    Middle ratio; // ours to bare, round by round
    Middle ours;  // microseconds a call
    Middle bare;  // microseconds a call
    size_t rounds = 0;
};

// Calls both in turns, each `calls` times in a row, for so many rounds; one round more comes first
// and does not count. The turns change places from round to round.
Pair timeInPairs(size_t rounds, size_t calls, const Work& ours, const Work& bare);

// The time of one call in microseconds.
double timeOnce(const Work& work);

} // namespace bench
