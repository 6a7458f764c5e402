// Times as people read and write them. All numbers are milliseconds since 1970, UTC.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <windows.h>

namespace zemlink {

std::int64_t currentTime();
std::int64_t timeOf(const FILETIME& time);

// `12:01:03.120`, local time.
std::string localTimeOfDay(std::int64_t time);
// `2026-11-21`, local time.
std::string localDate(std::int64_t time);
// `2026-11-21T11:01:03.120Z`
std::string universalTime(std::int64_t time);
// The reverse; empty when the text is not exactly of that form.
std::optional<std::int64_t> parseUniversalTime(std::string_view text);

// `2026-11-21 10:11:12`, with or without milliseconds and seconds, local time. Empty when it is
// anything else.
std::optional<std::int64_t> parseLocalTime(std::string_view text);

// The same, and `10:11` or `10:11:12` for that time on the day of `now`.
std::optional<std::int64_t> parseTimeOrDate(std::string_view text, std::int64_t now);

} // namespace zemlink
