// Random numbers; the same seed gives the same numbers on every platform.
#pragma once

#include <cstdint>

namespace fuzzing {

class Random {
public:
    explicit Random(std::uint64_t seed) : state_(seed) {}

    std::uint64_t next()
    {
        state_ += 0x9E3779B97F4A7C15;
        std::uint64_t mixed = state_;
        mixed = (mixed ^ mixed >> 30) * 0xBF58476D1CE4E5B9;
        mixed = (mixed ^ mixed >> 27) * 0x94D049BB133111EB;
        return mixed ^ mixed >> 31;
    }

    // 0 to limit - 1; the limit is at least 1.
    std::uint64_t below(std::uint64_t limit) { return next() % limit; }
    bool isOneIn(std::uint64_t times) { return below(times) == 0; }

private:
    std::uint64_t state_;
};

} // namespace fuzzing
