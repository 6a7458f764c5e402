// How much a recording may hold: what is recorded can also be read.
#pragma once

#include "tools/zemlink/session/exchange_event.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace zemlink {

inline constexpr size_t mostRecordedEvents = 20'000;
inline constexpr std::uint64_t mostRecordedBytes = std::uint64_t{512} << 20;
inline constexpr std::int64_t longestRecordingMs = std::int64_t{30} * 24 * 60 * 60 * 1000;

// Of its index, with events as above that name no path of more than 260 characters.
inline constexpr size_t mostIndexBytes = size_t{16} << 20;

// For one recording.
class RecordingSpace {
public:
    // `startedAt`: milliseconds since 1970, UTC.
    explicit RecordingSpace(std::int64_t startedAt) : startedAt_(startedAt) {}

    // Counts the event. If there is no room for it, the limit, as a sentence; else empty.
    std::string findLimit(const ExchangeEvent& event);
    // That it has lasted too long; else empty. `now`: milliseconds since 1970, UTC.
    std::string findLimit(std::int64_t now) const;

private:
    std::int64_t startedAt_;
    size_t events_ = 0;
    std::uint64_t bytes_ = 0;
};

} // namespace zemlink
