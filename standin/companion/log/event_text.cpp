#include "standin/companion/log/event_text.h"

#include <cwchar>

namespace companion {
namespace {

struct TitleRow {
    std::wstring_view event;
    std::wstring_view title;
};

constexpr TitleRow titleRows[] = {
    {L"started", L"Started"},
    {L"stopped", L"Stopped"},
    {L"command", L"Command"},
    {L"not-understood", L"Not understood"},
    {L"library", L"Library read"},
    {L"library-line-bad", L"Library line left out"},
    {L"host-found", L"Host started"},
    {L"host-gone", L"Host closed"},
    {L"check-out", L"Check-out requested"},
    {L"commit", L"Commit"},
    {L"version", L"New version"},
    {L"new-part", L"New part"},
    {L"commit-failed", L"Commit failed"},
    {L"commit-waits", L"Commit waits"},
    {L"commit-known", L"Commit known"},
    {L"commits-left", L"Commits left over"},
    {L"commit-skipped", L"Bytes skipped"},
    {L"picture-kept", L"Picture kept"},
    {L"about", L"About"},
    {L"kept", L"Changed work kept"},
    {L"settings", L"Machine settings"},
    {L"sent", L"Sent to host"},
    {L"new-file", L"New file sent"},
    {L"check-in", L"Check-in sent"},
    {L"taken", L"Taken by host"},
    {L"not-taken", L"Not taken"},
    {L"lost", L"Lost"},
    {L"not-sent", L"Not sent"},
    {L"refused", L"Refused"},
    {L"port-taken", L"Port taken"},
    {L"port-open", L"Port open"},
    {L"line", L"Line received"},
    {L"setup-sheet", L"Setup sheet"},
    {L"setup-sheet-unreadable", L"Setup sheet unreadable"},
    {L"commit-notice", L"Commit notice"},
    {L"tool-data", L"Tool data"},
    {L"tool", L"Tool"},
    {L"tool-record-bad", L"Tool record left out"},
    {L"tool-records-bad", L"Tool records left out"},
    {L"tool-data-unreadable", L"Tool data unreadable"},
    {L"nc-queue", L"NC queue"},
    {L"nc-program", L"NC program"},
    {L"nc-queue-line-bad", L"NC queue line left out"},
    {L"nc-queue-lines-bad", L"NC queue lines left out"},
    {L"nc-queue-unreadable", L"NC queue unreadable"},
};

std::wstring padded(int number, size_t digits)
{
    const std::wstring text = std::to_wstring(number);
    return text.size() < digits ? std::wstring(digits - text.size(), L'0') + text : text;
}

std::wstring named(std::wstring_view name)
{
    return L" " + std::wstring(name) + L"=";
}

} // namespace

std::wstring numberField(std::wstring_view name, std::int64_t value)
{
    return named(name) + std::to_wstring(value);
}

std::wstring textField(std::wstring_view name, std::wstring_view value)
{
    std::wstring field = named(name) + L'"';
    for (const wchar_t c : value)
        field += c < L' ' || c == L'\x7F' ? L' ' : c;
    return field + L'"';
}

std::wstring millisecondsField(std::wstring_view name, double milliseconds)
{
    wchar_t number[64];
    std::swprintf(number, 64, L"%.1f", milliseconds);
    return named(name) + number + L"ms";
}

std::wstring bytesField(std::wstring_view name, std::string_view bytes)
{
    constexpr wchar_t digits[] = L"0123456789ABCDEF";
    std::wstring field = named(name);
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        field += digits[value / 16];
        field += digits[value % 16];
    }
    return field;
}

std::wstring wordField(std::wstring_view name, std::wstring_view value)
{
    return named(name) + std::wstring(value);
}

std::wstring eventLine(const Moment& moment, std::wstring_view event, std::wstring_view fields)
{
    const std::wstring date =
        padded(moment.year, 4) + L'-' + padded(moment.month, 2) + L'-' + padded(moment.day, 2);
    return date + L' ' + timeOfDay(moment) + L' ' + std::wstring(event) + std::wstring(fields) +
           L'\n';
}

std::wstring timeOfDay(const Moment& moment)
{
    return padded(moment.hour, 2) + L':' + padded(moment.minute, 2) + L':' +
           padded(moment.second, 2) + L'.' + padded(moment.millisecond, 3);
}

std::wstring eventTitle(std::wstring_view event)
{
    for (const TitleRow& row : titleRows)
        if (row.event == event)
            return std::wstring(row.title);
    return std::wstring(event);
}

} // namespace companion
