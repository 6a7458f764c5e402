#include "tools/zemlink/reports/companion_reports.h"

#include "peer/bookmark.h"
#include "peer/numbers.h"
#include "peer/text.h"

#include <limits>

namespace zemlink {
namespace {

using Limits = std::numeric_limits<std::int64_t>;

// Bytes in hexadecimal can look like a decimal number.
Report fieldReport(const peer::EventField& field)
{
    const auto number = field.isText || field.name == "hex"
                            ? std::nullopt
                            : peer::parsePrintedNumber(field.value, Limits::min(), Limits::max());
    return number ? Report(*number) : Report(field.value);
}

} // namespace

Report eventReport(const peer::CompanionEvent& event)
{
    Report report{{"time", event.time}, {"event", event.name}};
    for (const peer::EventField& field : event.fields)
        report[field.name] = fieldReport(field);
    return report;
}

Report workingCopyReport(const peer::WorkingCopy& copy)
{
    Report report{{"id", nullptr}, {"part", nullptr}, {"file", nullptr}};
    if (copy.id)
        report["id"] = *copy.id;
    if (copy.number != 0)
        report["part"] = copy.number;
    if (!copy.path.empty())
        report["file"] = peer::toUtf8(copy.path);
    return report;
}

Outcome decodeBookmark(std::string_view bytes)
{
    const auto bookmark = peer::parseBookmark(peer::fromUtf8(bytes));
    if (!bookmark)
        return {Report{{"remarks", {"It is not a bookmark as the Companion writes it."}}}, problem};
    if (bookmark->isFinished)
        return {Report{{"finished", true}}};
    Report report{{"finished", false}, {"taken", bookmark->taken}};
    if (const auto& plan = bookmark->underWay) {
        report["storing"] = {
            {"part", plan->number}, {"version", plan->version}, {"name", peer::toUtf8(plan->name)}};
    }
    return {report};
}

} // namespace zemlink
