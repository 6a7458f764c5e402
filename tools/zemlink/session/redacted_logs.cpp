#include "tools/zemlink/session/redacted_logs.h"

#include "peer/companion_log.h"
#include "peer/debug_log.h"
#include "peer/lines.h"
#include "peer/text.h"

namespace zemlink {
namespace {

constexpr const char* leftOut = "(line left out)\n";

std::string redactedField(const Pseudonyms& names, const peer::EventField& field)
{
    if (field.isText)
        return '"' + peer::toUtf8(names.replaceIn(peer::fromUtf8(field.value))) + '"';
    return field.name == "hex" ? "(left out)" : field.value;
}

std::string redactedLine(const Pseudonyms& names, const peer::CompanionEvent& event)
{
    std::string line = event.time + ' ' + event.name;
    for (const peer::EventField& field : event.fields)
        line += ' ' + field.name + '=' + redactedField(names, field);
    return line + '\n';
}

} // namespace

void addNamesOfCompanionLog(Pseudonyms& names, std::string_view bytes)
{
    for (const auto& event : peer::parseCompanionLog(bytes))
        if (event)
            for (const peer::EventField& field : event->fields)
                if (field.isText)
                    names.addText(peer::fromUtf8(field.value));
}

void addNamesOfLoadLog(Pseudonyms& names, std::string_view bytes)
{
    for (const peer::LoggedLoad& load : peer::parseDebugLog(bytes).loads)
        names.addPath(peer::fromAnsi(load.file));
}

std::string redactedCompanionLog(const Pseudonyms& names, std::string_view bytes)
{
    std::string text;
    for (const auto& event : peer::parseCompanionLog(bytes))
        text += event ? redactedLine(names, *event) : leftOut;
    return text;
}

std::string redactedLoadLog(const Pseudonyms& names, std::string_view bytes)
{
    const std::vector<size_t> bad = peer::parseDebugLog(bytes).badLines;
    std::string text;
    size_t number = 0;
    auto nextBad = bad.begin(); // in order
    for (const std::string_view line : peer::fileLines(bytes)) {
        ++number;
        const bool isBad = nextBad != bad.end() && *nextBad == number;
        nextBad += isBad ? 1 : 0;
        text += isBad ? leftOut : peer::toUtf8(names.replaceIn(peer::fromAnsi(line))) + '\n';
    }
    return text;
}

} // namespace zemlink
