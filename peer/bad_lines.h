// Lines of an exchange file that are none of its records: the first few are told one by one, the
// others together, so that a file of nothing else costs a handful of events.
#pragma once

#include <cstdint>

namespace companion {

inline constexpr std::int64_t mostBadLinesTold = 20;

struct BadLines {
    std::int64_t count = 0;
};

// Counts a line; true when it is told by itself.
inline bool countBadLine(BadLines& lines)
{
    return ++lines.count <= mostBadLinesTold;
}

// Of those counted, how many were not told by themselves.
inline std::int64_t untoldBadLines(const BadLines& lines)
{
    return lines.count > mostBadLinesTold ? lines.count - mostBadLinesTold : 0;
}

} // namespace companion
