#include "tools/zemlink/verify/companion_events.h"

#include <algorithm>

namespace zemlink {
namespace {

constexpr std::string_view commitEvent = "commit";

const peer::EventField* findField(const peer::CompanionEvent& event, std::string_view name)
{
    const auto found = std::ranges::find(event.fields, name, &peer::EventField::name);
    return found == event.fields.end() ? nullptr : &*found;
}

bool hasField(const peer::CompanionEvent& event, std::string_view name, std::string_view value)
{
    const peer::EventField* field = findField(event, name);
    return field != nullptr && field->value == value;
}

} // namespace

CompanionEventLog::CompanionEventLog(std::wstring path) : tail_(std::move(path))
{
    tail_.skip();
}

void CompanionEventLog::read()
{
    for (const std::string& line : tail_.newLines())
        for (peer::CompanionEvent& event : eventsIn(line))
            events_.push_back(std::move(event));
}

bool CompanionEventLog::exists()
{
    return size() != 0;
}

size_t CompanionEventLog::size()
{
    read();
    return events_.size();
}

std::vector<LoggedCommit> CompanionEventLog::commitsOf(std::string_view file, size_t from)
{
    read();
    std::vector<LoggedCommit> commits;
    for (size_t place = from; place < events_.size(); ++place) {
        const peer::CompanionEvent& event = events_[place];
        if (event.name != commitEvent || !hasField(event, "file", file))
            continue;
        const peer::EventField* id = findField(event, "id");
        commits.push_back({place, id != nullptr ? id->value : std::string()});
    }
    return commits;
}

bool CompanionEventLog::hasCommits(size_t from)
{
    read();
    return std::any_of(
        events_.begin() + static_cast<std::ptrdiff_t>(std::min(from, events_.size())),
        events_.end(), [](const peer::CompanionEvent& event) { return event.name == commitEvent; });
}

bool CompanionEventLog::has(std::string_view event, std::string_view field, std::string_view value)
{
    read();
    return std::ranges::any_of(events_, [&](const peer::CompanionEvent& each) {
        return each.name == event && hasField(each, field, value);
    });
}

} // namespace zemlink
