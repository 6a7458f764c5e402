#include "life/companion_events.h"

#include "support/bytes.h"

#include <algorithm>
#include <set>
#include <string_view>

namespace testing_support {

namespace {

constexpr size_t dateTimeAndBlank = 24;

// Takes a field with an unquoted value out.
void takeField(std::wstring& event, std::wstring_view start)
{
    const size_t from = event.rfind(start);
    if (from == event.npos)
        return;
    const size_t end = event.find(L' ', from + start.size());
    event.erase(from, end == event.npos ? event.npos : end - from);
}

// Cuts behind the text, if the event starts with it.
void cutBehind(std::wstring& event, std::wstring_view start)
{
    if (event.rfind(start, 0) == 0)
        event.resize(start.size());
}

std::wstring_view wordOf(std::wstring_view event)
{
    return event.substr(0, event.find(L' '));
}

size_t countIn(const std::map<std::wstring, size_t>& counts, const std::wstring& event)
{
    const auto found = counts.find(event);
    return found == counts.end() ? 0 : found->second;
}

} // namespace

std::wstring shortEvent(const std::wstring& line)
{
    static const std::set<std::wstring_view> unasked = {L"started", L"stopped", L"library",
                                                        L"host-found", L"host-gone"};
    std::wstring event = line.substr(std::min(line.size(), dateTimeAndBlank));
    const std::wstring_view word = wordOf(event);
    if (unasked.count(word) > 0)
        return {};
    if (word == L"line" || word == L"check-out")
        return std::wstring(word);
    if (word == L"taken")
        takeField(event, L" after=");
    if (word == L"commit")
        takeField(event, L" from=");
    if (wordOf(event) == L"nc-program")
        takeField(event, L" bytes=");
    cutBehind(event, L"command text=\"--checkout");
    return event;
}

void CompanionEvents::plan(const Lines& events)
{
    for (const std::wstring& event : events)
        ++planned_[event];
}

void CompanionEvents::readOn()
{
    for (const std::wstring& line : log_.newLines())
        if (const std::wstring event = shortEvent(line); !event.empty())
            ++seen_[event];
}

Lines CompanionEvents::missing(const Lines& events) const
{
    Lines missing;
    for (const std::wstring& event : events)
        if (countIn(seen_, event) < countIn(planned_, event) &&
            testing_support::count(missing, event) == 0)
            missing.push_back(event);
    return missing;
}

std::string CompanionEvents::complaint() const
{
    std::map<std::wstring, size_t> all = planned_;
    all.insert(seen_.begin(), seen_.end());
    std::string complaint;
    for (const auto& [event, times] : all) {
        const size_t planned = countIn(planned_, event);
        const size_t seen = countIn(seen_, event);
        if (planned != seen)
            complaint += "the Companion's log has " + std::to_string(seen) + " times, and not " +
                         std::to_string(planned) + " times: " + toUtf8(event) + '\n';
    }
    return complaint;
}

size_t CompanionEvents::count() const
{
    size_t count = 0;
    for (const auto& [event, times] : seen_)
        count += times;
    return count;
}

} // namespace testing_support
