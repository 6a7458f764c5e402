#include "tools/zemlink/session/local_time.h"

#include <algorithm>
#include <array>

namespace zemlink {
namespace {

constexpr std::int64_t ticksPerMs = 10000;
constexpr std::int64_t msFrom1601To1970 = 11644473600000;

SYSTEMTIME systemTimeOf(std::int64_t time)
{
    ULARGE_INTEGER ticks{};
    ticks.QuadPart = static_cast<ULONGLONG>((time + msFrom1601To1970) * ticksPerMs);
    const FILETIME file{ticks.LowPart, ticks.HighPart};
    SYSTEMTIME parts{};
    FileTimeToSystemTime(&file, &parts);
    return parts;
}

SYSTEMTIME localPartsOf(std::int64_t time)
{
    const SYSTEMTIME universal = systemTimeOf(time);
    SYSTEMTIME local{};
    SystemTimeToTzSpecificLocalTime(nullptr, &universal, &local);
    return local;
}

// With leading zeros.
std::string digits(WORD number, size_t count)
{
    const std::string text = std::to_string(number);
    return std::string(count - std::min(count, text.size()), '0') + text;
}

std::string dateText(const SYSTEMTIME& parts)
{
    return digits(parts.wYear, 4) + '-' + digits(parts.wMonth, 2) + '-' + digits(parts.wDay, 2);
}

std::string clockText(const SYSTEMTIME& parts)
{
    return digits(parts.wHour, 2) + ':' + digits(parts.wMinute, 2) + ':' +
           digits(parts.wSecond, 2) + '.' + digits(parts.wMilliseconds, 3);
}

// `form` holds a `0` for each digit; every other character is itself. The text may be
// shorter, if it ends where a separator follows. Empty when it differs.
std::optional<std::array<WORD, 7>> numbersIn(std::string_view text, std::string_view form)
{
    std::array<WORD, 7> numbers{};
    size_t place = 0;
    if (text.size() > form.size() || (text.size() < form.size() && form[text.size()] == '0'))
        return std::nullopt;
    for (size_t i = 0; i < text.size(); ++i) {
        const bool isDigit = text[i] >= '0' && text[i] <= '9';
        if (form[i] == '0' ? !isDigit : text[i] != form[i])
            return std::nullopt;
        if (isDigit)
            numbers[place] = static_cast<WORD>(numbers[place] * 10 + (text[i] - '0'));
        else
            ++place;
    }
    return numbers;
}

constexpr std::string_view dateForm = "0000-00-00 00:00:00.000";
constexpr std::string_view universalForm = "0000-00-00T00:00:00.000Z";
constexpr size_t shortestDate = 16; // with hours and minutes
constexpr size_t shortestTime = 5;

} // namespace

std::int64_t timeOf(const FILETIME& time)
{
    ULARGE_INTEGER ticks{};
    ticks.LowPart = time.dwLowDateTime;
    ticks.HighPart = time.dwHighDateTime;
    return static_cast<std::int64_t>(ticks.QuadPart) / ticksPerMs - msFrom1601To1970;
}

std::int64_t currentTime()
{
    FILETIME now{};
    GetSystemTimeAsFileTime(&now);
    return timeOf(now);
}

std::string localTimeOfDay(std::int64_t time)
{
    return clockText(localPartsOf(time));
}

std::string localDate(std::int64_t time)
{
    return dateText(localPartsOf(time));
}

std::string universalTime(std::int64_t time)
{
    const SYSTEMTIME parts = systemTimeOf(time);
    return dateText(parts) + 'T' + clockText(parts) + 'Z';
}

std::optional<std::int64_t> parseUniversalTime(std::string_view text)
{
    const auto numbers = numbersIn(text, universalForm);
    if (!numbers || text.size() != universalForm.size())
        return std::nullopt;
    const auto& [year, month, day, hour, minute, second, millisecond] = *numbers;
    const SYSTEMTIME parts{year, month, 0, day, hour, minute, second, millisecond};
    FILETIME time{};
    if (!SystemTimeToFileTime(&parts, &time)) // checks the ranges of all numbers
        return std::nullopt;
    return timeOf(time);
}

std::optional<std::int64_t> parseLocalTime(std::string_view text)
{
    const auto numbers = numbersIn(text, dateForm);
    if (!numbers || text.size() < shortestDate)
        return std::nullopt;
    const auto& [year, month, day, hour, minute, second, millisecond] = *numbers;
    const SYSTEMTIME local{year, month, 0, day, hour, minute, second, millisecond};
    SYSTEMTIME universal{};
    FILETIME time{};
    // The second conversion checks the ranges of all numbers.
    if (!TzSpecificLocalTimeToSystemTime(nullptr, &local, &universal) ||
        !SystemTimeToFileTime(&local, &time) || !SystemTimeToFileTime(&universal, &time))
        return std::nullopt;
    return timeOf(time);
}

std::optional<std::int64_t> parseTimeOrDate(std::string_view text, std::int64_t now)
{
    if (!numbersIn(text, dateForm.substr(11)) || text.size() < shortestTime)
        return parseLocalTime(text);
    return parseLocalTime(dateText(localPartsOf(now)) + ' ' + std::string(text));
}

} // namespace zemlink
