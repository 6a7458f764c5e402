#include "tools/zemlink/reports/load_reports.h"

#include "peer/commit_record.h"
#include "peer/lines.h"
#include "peer/text.h"

namespace zemlink {
namespace {

constexpr const char* stepMeanings[] = {
    "asked for",
    "opened by the host, and named",
    "machine settings taken",
    "marked unchanged",
    "nothing has happened since step 4",
    "nothing has happened since step 4",
    "ready to be named in the title and saved",
};
constexpr const char* cadMeaning = "a file of a CAD system, ready to be saved and committed";

} // namespace

Report loadReport(const peer::LoggedLoad& load)
{
    Report report{{"file", peer::ansiToUtf8(load.file)}, {"finished", load.isFinished()}};
    if (load.system.empty())
        report["lastStep"] = load.lastStep;
    else
        report["cadSystem"] = peer::ansiToUtf8(load.system);
    report["reached"] = reachedText(load);
    return report;
}

Report stepsReport()
{
    Report steps;
    for (const char* meaning : stepMeanings)
        steps[std::to_string(steps.size() + 1)] = meaning;
    steps["3 again"] = cadMeaning;
    return steps;
}

Report stepReport(std::string_view line)
{
    const peer::LoadStep step = peer::parseLoadStep(line);
    if (step.number == 0) {
        const std::vector<std::string_view> lines = peer::fileLines(line);
        return {{"step", nullptr}, {"text", peer::ansiToUtf8(lines.empty() ? line : lines[0])}};
    }
    const std::string text = peer::ansiToUtf8(step.text);
    const bool isSystem = step.number == 3 && !peer::isFullPath(peer::fromUtf8(text));
    return {{"step", step.number},
            {"file", text},
            {"reached", isSystem ? cadMeaning : stepMeanings[step.number - 1]}};
}

std::string reachedText(const peer::LoggedLoad& load)
{
    if (!load.system.empty())
        return cadMeaning;
    return load.lastStep == 0 ? "the load has not begun" : stepMeanings[load.lastStep - 1];
}

} // namespace zemlink
