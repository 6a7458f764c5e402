#include "bench/paired.h"

#include <algorithm>
#include <chrono>

namespace bench {

namespace {

double timeEach(size_t calls, const Work& work)
{
    const auto start = std::chrono::steady_clock::now();
    for (size_t call = 0; call < calls; ++call)
        work();
    const std::chrono::duration<double, std::micro> time = std::chrono::steady_clock::now() - start;
    return time.count() / static_cast<double>(calls);
}

double quantile(const std::vector<double>& sorted, double share)
{
    const double place = share * static_cast<double>(sorted.size() - 1);
    const auto below = static_cast<size_t>(place);
    const size_t above = std::min(below + 1, sorted.size() - 1);
    return sorted[below] + (sorted[above] - sorted[below]) * (place - static_cast<double>(below));
}

} // namespace

Middle middleOf(std::vector<double> values)
{
    if (values.empty())
        return {};
    std::sort(values.begin(), values.end());
    return {quantile(values, 0.5), quantile(values, 0.25), quantile(values, 0.75)};
}

double quantileOf(std::vector<double> values, double share)
{
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    return quantile(values, share);
}

double timeOnce(const Work& work)
{
    return timeEach(1, work);
}

Pair measureInPairs(size_t rounds, const Timing& ours, const Timing& bare)
{
    std::vector<double> ourTimes, bareTimes, ratios;
    ours();
    bare();
    for (size_t round = 0; round < rounds; ++round) {
        const bool oursFirst = round % 2 == 0;
        const double first = oursFirst ? ours() : bare();
        const double second = oursFirst ? bare() : ours();
        ourTimes.push_back(oursFirst ? first : second);
        bareTimes.push_back(oursFirst ? second : first);
        ratios.push_back(ourTimes.back() / bareTimes.back());
    }
    return {middleOf(ratios), middleOf(ourTimes), middleOf(bareTimes), rounds};
}

Pair timeInPairs(size_t rounds, size_t calls, const Work& ours, const Work& bare)
{
    return measureInPairs(
        rounds, [&] { return timeEach(calls, ours); }, [&] { return timeEach(calls, bare); });
}

} // namespace bench
