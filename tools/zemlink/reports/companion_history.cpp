#include "tools/zemlink/reports/companion_history.h"

#include "peer/command_line.h"
#include "peer/numbers.h"
#include "peer/text.h"

#include <algorithm>
#include <limits>

namespace zemlink {
namespace {

constexpr std::string_view noAnswer = "the running program does not answer: ";

// Empty when the event has no such field.
std::string fieldOf(const peer::CompanionEvent& event, std::string_view name)
{
    const auto field = std::ranges::find(event.fields, name, &peer::EventField::name);
    return field == event.fields.end() ? std::string() : field->value;
}

template <class Number>
std::optional<Number> numberOf(const peer::CompanionEvent& event, std::string_view name)
{
    using Limits = std::numeric_limits<Number>;
    const auto number =
        peer::parsePrintedNumber(fieldOf(event, name), Limits::min(), Limits::max());
    return number ? std::optional(static_cast<Number>(*number)) : std::nullopt;
}

// The file of a commit in these arguments; empty for any other arguments.
std::string committedFile(std::string_view arguments)
{
    const peer::Command command = peer::parseCommandLine(peer::fromUtf8(arguments));
    return command.word == peer::Word::commit ? peer::toUtf8(command.value) : std::string();
}

} // namespace

CompanionEvents eventsIn(std::string_view bytes)
{
    CompanionEvents events;
    for (auto& event : peer::parseCompanionLog(bytes))
        if (event)
            events.push_back(std::move(*event));
    return events;
}

std::vector<SentRequest> sentRequests(const CompanionEvents& events)
{
    std::vector<SentRequest> requests;
    for (const peer::CompanionEvent& event : events) {
        const auto id = numberOf<std::int32_t>(event, "id");
        const auto host = numberOf<std::uint32_t>(event, "host");
        if (event.name == "sent" && id && host)
            requests.push_back({*id, *host, fieldOf(event, "file")});
    }
    return requests;
}

// The Companion logs only that it did not get the port, and when it gets it after that.
std::optional<bool> hasPort(const CompanionEvents& events, std::uint32_t process)
{
    bool isItsStart = false;
    bool has = false;
    for (const peer::CompanionEvent& event : events) {
        if (event.name == "started") {
            isItsStart = numberOf<std::uint32_t>(event, "pid") == process;
            has = true;
        } else if (event.name == "port-taken" || event.name == "port-open") {
            has = event.name == "port-open";
        }
    }
    return isItsStart ? std::optional(has) : std::nullopt;
}

std::vector<RefusedCommit> refusedCommits(const CompanionEvents& events)
{
    std::vector<RefusedCommit> refused;
    for (const peer::CompanionEvent& event : events) {
        const std::string reason = fieldOf(event, "reason");
        const std::string committed = event.name == "commit" ? fieldOf(event, "file") : "";
        std::erase_if(refused, [&](const RefusedCommit& each) { return each.file == committed; });
        if (event.name != "refused" || !reason.starts_with(noAnswer))
            continue;
        if (const std::string file = committedFile(reason.substr(noAnswer.size())); !file.empty())
            refused.push_back({event.time, file});
    }
    return refused;
}

} // namespace zemlink
