#include "tools/zemlink/verify/addin_rule_groups.h"

#include "peer/wire_constants.h"
#include "tools/zemlink/verify/addin_commit_evidence.h"

namespace zemlink {
namespace {

Sight judgeCommittedAs(const CommitsSeen& seen, CommitStep step, const std::string& name)
{
    if (!hasReached(seen, step))
        return notSeen(seen.cut);
    if (addedIn(seen, step).empty() && countNotices(seen, commitNoticeStart(step)) == 0)
        return notSeen("nothing was committed");
    return keptIf(isCommittedAs(seen, step, name), "it was not committed as " + name);
}

Sight judgeRedirected(const CommitsSeen& seen)
{
    return judgeCommittedAs(seen, CommitStep::redirected, seen.folder + "\\tmp\\redirected.mcam");
}

Sight judgeInside(const CommitsSeen& seen)
{
    return judgeCommittedAs(seen, CommitStep::redirected, seen.parts.inside);
}

Sight judgeLastSetting(const CommitsSeen& seen)
{
    return judgeCommittedAs(seen, CommitStep::lastSetting, seen.parts.lastSetting);
}

// Two saves, each with its own.
Sight judgeToolsSetting(const CommitsSeen& seen)
{
    if (!hasReached(seen, CommitStep::redirected))
        return notSeen(seen.cut);
    const size_t sheets = countNotices(seen, sheetNoticeStart(CommitStep::redirected));
    return keptIf(sheets == 2, std::to_string(sheets) + " setup sheets came with two saves");
}

Sight judgeToolsCase(const CommitsSeen& seen)
{
    if (!hasReached(seen, CommitStep::lastSetting))
        return notSeen(seen.cut);
    return keptIf(countNotices(seen, sheetNoticeStart(CommitStep::lastSetting)) == 0,
                  "a setup sheet was sent for AlwaysSaveTools=Y");
}

Sight judgeToolsWithoutRequest(const CommitsSeen& seen)
{
    if (!hasReached(seen, CommitStep::afterCheckIn))
        return notSeen(seen.cut);
    const std::string notice = std::string(peer::setupSheetNotice) + "0;";
    return keptIf(countNotices(seen, notice) == 0, "a setup sheet was sent for request id 0");
}

Sight judgeCatia(const CommitsSeen& seen)
{
    if (!hasReached(seen, CommitStep::redirected))
        return notSeen(seen.cut);
    if (!seen.hasCatiaReader)
        return notSeen("the host has no chooks\\catread5x.dll");
    const size_t from = seen.trace.find(callOf("DoFileOpen", seen.parts.redirected));
    const size_t woken = seen.trace.find("catread5x.m_notify(6)");
    if (woken != HostTrace::none && woken < from)
        return broken("it was called without the setting");
    return keptIf(woken != HostTrace::none, "its m_notify was not called with 6");
}

Sight judgeFailedLoad(const CommitsSeen& seen)
{
    return judgeMessage(seen, CommitStep::unreadable, seen.parts.unreadable,
                        "Failed to load file.");
}

} // namespace

std::vector<JudgedRule<CommitsSeen>> addInSettingRules()
{
    return {
        {"settings.ftp", "Commits a file from elsewhere under tmp with UseFtpServer=y.",
         judgeRedirected},
        {"settings.ftp-inside", "Commits a file in the installation folder under its own name.",
         judgeInside},
        {"settings.last-line", "Takes the last line that contains a key.", judgeLastSetting},
        {"settings.tools", "Sends the setup sheet with each save with AlwaysSaveTools=y.",
         judgeToolsSetting},
        {"settings.tools-case", "Sends none with AlwaysSaveTools=Y.", judgeToolsCase},
        {"settings.tools-no-request", "Sends none for the request id 0.", judgeToolsWithoutRequest},
        {"settings.catia", "Wakes the host's CATIA reader after a load with MCXCATIA=y.",
         judgeCatia},
        {"messages.failed-load", "Shows a message when the host cannot open a file.",
         judgeFailedLoad},
    };
}

} // namespace zemlink
