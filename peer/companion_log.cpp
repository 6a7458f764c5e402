#include "peer/companion_log.h"

#include "peer/lines.h"

#include <algorithm>

namespace peer {
namespace {

constexpr std::string_view timeForm = "0000-00-00 00:00:00.000"; // 0: any digit

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isTime(std::string_view text)
{
    return std::equal(
        text.begin(), text.end(), timeForm.begin(), timeForm.end(),
        [](char c, char form) { return form == '0' ? isDigit(c) : c == form; });
}

// The length of the name of an event or a field at the start of the text.
size_t nameLength(std::string_view text)
{
    const auto end = std::find_if(text.begin(), text.end(),
                                  [](char c) { return (c < 'a' || c > 'z') && c != '-'; });
    return static_cast<size_t>(end - text.begin());
}

// True for ` name=` and whatever follows.
bool isFieldStart(std::string_view text)
{
    if (!text.starts_with(' '))
        return false;
    const size_t length = nameLength(text.substr(1));
    return length > 0 && text.substr(1 + length).starts_with('=');
}

// The position of the quote that ends the text, which starts after its first quote.
size_t closingQuote(std::string_view text)
{
    for (size_t quote = text.find('"'); quote != text.npos; quote = text.find('"', quote + 1)) {
        const std::string_view rest = text.substr(quote + 1);
        if (rest.empty() || isFieldStart(rest))
            return quote;
    }
    return text.npos;
}

// Removes the value from the start of `rest`. False when a text does not end.
bool takeValue(std::string_view& rest, EventField& field)
{
    field.isText = rest.starts_with('"');
    rest.remove_prefix(field.isText ? 1 : 0);
    const size_t end = field.isText ? closingQuote(rest) : std::min(rest.find(' '), rest.size());
    if (end == rest.npos)
        return false;
    field.value = rest.substr(0, end);
    rest.remove_prefix(end + (field.isText ? 1 : 0));
    return true;
}

std::optional<CompanionEvent> parseEvent(std::string_view line)
{
    if (!isTime(line.substr(0, timeForm.size())) || !line.substr(timeForm.size()).starts_with(' '))
        return std::nullopt;
    std::string_view rest = line.substr(timeForm.size() + 1);
    const size_t length = nameLength(rest);
    CompanionEvent event{std::string(line.substr(0, timeForm.size())),
                         std::string(rest.substr(0, length))};
    rest.remove_prefix(length);
    while (isFieldStart(rest)) {
        EventField field{std::string(rest.substr(1, nameLength(rest.substr(1))))};
        rest.remove_prefix(1 + field.name.size() + 1);
        if (!takeValue(rest, field))
            return std::nullopt;
        event.fields.push_back(std::move(field));
    }
    return rest.empty() && !event.name.empty() ? std::optional(event) : std::nullopt;
}

} // namespace

std::vector<std::optional<CompanionEvent>> parseCompanionLog(std::string_view bytes)
{
    std::vector<std::optional<CompanionEvent>> events;
    for (const std::string_view line : fileLines(bytes))
        events.push_back(parseEvent(line));
    return events;
}

} // namespace peer
