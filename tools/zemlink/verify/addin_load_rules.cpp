#include "tools/zemlink/verify/addin_rule_groups.h"

#include "peer/debug_log.h"
#include "tools/zemlink/reports/report.h"

#include <string_view>

namespace zemlink {
namespace {

Sight judgeMachine(const RequestsSeen& seen)
{
    const size_t opened = seen.trace.find(callOf("DoFileOpen", seen.parts.first));
    if (opened == HostTrace::none)
        return notSeen("the file was not opened");
    const size_t activated = seen.trace.find("SetActiveMachine(", opened);
    if (activated == HostTrace::none)
        return broken("the host was not asked to activate a machine");
    const std::string& line = seen.trace.lines()[activated];
    return keptIf(line.find(callOf("SetActiveMachine", verifiedMachine)) != std::string::npos,
                  "the host was asked for " + line);
}

Sight judgeMachineGone(const RequestsSeen& seen)
{
    if (!isOpened(seen, seen.parts.first))
        return notSeen("the file was not opened");
    return keptIf(seen.haveSettingsGone, "temp\\mcsettings-<request id>.txt was still there");
}

Sight judgeOthersStay(const RequestsSeen& seen)
{
    if (!isOpened(seen, seen.parts.first))
        return notSeen("the file was not opened");
    return keptIf(seen.haveOthersStayed, "the file of another request id was gone");
}

// The lines of the log with their ends, without the last one if it lacks its end.
std::vector<std::string> logLines(std::string_view log)
{
    std::vector<std::string> lines;
    for (size_t end = log.find('\n'); end != log.npos; end = log.find('\n')) {
        lines.emplace_back(log.substr(0, end + 1));
        log.remove_prefix(end + 1);
    }
    return lines;
}

// Lines of other loads may be between them.
Sight judgeLog(const RequestsSeen& seen)
{
    if (!hasReached(seen, RequestStep::firstPart))
        return notSeen(seen.cut);
    constexpr int steps = 7;
    int found = 0;
    for (const std::string& line : logLines(seen.loadLog)) {
        const int step = peer::parseLoadStep(line).number;
        if (step == 0 || !line.ends_with("\r\n"))
            return broken("it has the line \"" + visible(line) + '"');
        found += step == found + 1 ? 1 : 0;
    }
    return keptIf(found >= steps,
                  "step " + std::to_string(found + 1) + " was not in sys\\mcxlog.txt after a load");
}

Sight judgeLogGrows(const RequestsSeen& seen)
{
    if (!hasReached(seen, RequestStep::otherMark) || seen.loadLog.empty())
        return notSeen(seen.cut.empty() ? "nothing was logged" : seen.cut);
    return keptIf(seen.loadLogAtEnd.starts_with(seen.loadLog) &&
                      seen.loadLogAtEnd.size() > seen.loadLog.size(),
                  "the lines of the first load were not followed by those of later loads");
}

} // namespace

std::vector<JudgedRule<RequestsSeen>> addInLoadRules()
{
    return {
        {"machine.activated", "Activates the machine of the request's settings.", judgeMachine},
        {"machine.deleted", "Deletes the machine settings that it has read.", judgeMachineGone},
        {"machine.others-stay", "Leaves the machine settings of other requests as they are.",
         judgeOthersStay},
        {"log.steps", "Logs the seven steps of a load, each on a line with CR LF.", judgeLog},
        {"log.appended", "Appends to the log and never empties it.", judgeLogGrows},
    };
}

} // namespace zemlink
