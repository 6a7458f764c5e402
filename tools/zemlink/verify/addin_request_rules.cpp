#include "tools/zemlink/verify/addin_request_rules.h"

#include "peer/debug_log.h"
#include "peer/text.h"
#include "peer/wire_constants.h"
#include "tools/zemlink/reports/report.h"
#include "tools/zemlink/verify/judged_rule.h"

#include <algorithm>
#include <string_view>

namespace zemlink {
namespace {

using Seen = RequestsSeen;

constexpr char opening[] = "DoFileOpen(";

bool hasReached(const Seen& seen, RequestStep step)
{
    return seen.reached >= step;
}

bool isOpened(const Seen& seen, const std::string& part)
{
    return seen.trace.has(callOf("DoFileOpen", part));
}

// What the trace has between two of its lines; the whole trace has both.
std::string linesBetween(const HostTrace& trace, size_t from, size_t to)
{
    std::string text;
    for (size_t i = from; i < to; ++i)
        text += (text.empty() ? "" : "; ") + trace.lines()[i];
    return text.empty() ? "nothing" : text;
}

// ---- start -------------------------------------------------------------------------------------

Sight judgeExports(const Seen& seen)
{
    if (!seen.areExportsReadable)
        return notSeen("the library cannot be read");
    std::string names;
    for (const std::string& name : seen.missingExports)
        names += (names.empty() ? "" : ", ") + name;
    return keptIf(names.empty(), "it has no export " + names);
}

Sight judgeVersion(const Seen& seen)
{
    constexpr std::string_view calls[] = {"m_version(2100) -> ", "m_version(2250) -> ",
                                          "m_version(1105) -> "};
    constexpr std::string_view results[] = {"2100", "2100", "1105"};
    for (size_t i = 0; i < std::size(calls); ++i) {
        const size_t place = seen.trace.find(calls[i]);
        if (place == HostTrace::none)
            return notSeen("the host did not trace the result of m_version");
        if (!seen.trace.lines()[place].ends_with(results[i]))
            return broken(seen.trace.lines()[place] + " and not " + std::string(results[i]));
    }
    return {};
}

Sight judgeCommandFile(const Seen& seen)
{
    if (!seen.commandFile.exists)
        return broken("after m_open there was no file temp\\mastercam-<process id>.dat");
    return keptIf(seen.commandFile.size == 0,
                  "it had " + std::to_string(seen.commandFile.size) + " bytes");
}

Sight judgeSharing(const Seen& seen)
{
    if (!seen.commandFile.exists)
        return notSeen("there was no command file");
    return keptIf(seen.sharingError == 0,
                  "opening it with all sharing modes, to read, write and delete it, gave error " +
                      std::to_string(seen.sharingError));
}

Sight judgeHostProperty(const Seen& seen)
{
    for (const HostWindow& window : seen.windows)
        if (window.mark != 0)
            return keptIf(window.mark == 1, "its value was " + std::to_string(window.mark));
    return broken("no top-level window of the host had the property mastercam-instance");
}

Sight judgeMessageWindow(const Seen& seen)
{
    for (const HostWindow& window : seen.windows)
        if (window.hasMessageClass)
            return keptIf(!window.isVisible, "it was visible");
    return broken("no window of the host had the class mastercam-instance");
}

Sight judgeGreetingPort(const Seen& seen)
{
    if (!seen.opensGreetingPort)
        return notSeen("another program has port 20248");
    return keptIf(!*seen.opensGreetingPort, "port 20248 was open while the host was running");
}

// ---- requests ----------------------------------------------------------------------------------

Sight judgeTaken(const Seen& seen)
{
    return keptIf(seen.isFirstTaken, seen.cut);
}

Sight judgeOpened(const Seen& seen)
{
    return keptIf(isOpened(seen, seen.parts.first),
                  "the host was not asked to open " + seen.parts.first);
}

Sight judgeName(const Seen& seen)
{
    const auto name = seen.trace.findValue("geo_filename");
    if (!name)
        return notSeen(seen.cut);
    const std::string expected =
        seen.parts.first.substr(0, seen.parts.first.find_last_of('.')) + ".mcam";
    return keptIf(*name == expected, "it was named \"" + *name + "\" and not \"" + expected + '"');
}

std::string inCapitals(std::string text)
{
    for (char& c : text)
        c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    return text;
}

Sight judgeTitle(const Seen& seen)
{
    const auto name = seen.trace.findValue("geo_filename");
    const auto title = seen.trace.findValue("title");
    if (!name || !title)
        return notSeen(seen.cut);
    return keptIf(title->ends_with("  " + inCapitals(*name)), "the title was \"" + *title + '"');
}

Sight judgeSavedAfterLoad(const Seen& seen)
{
    if (!isOpened(seen, seen.parts.first))
        return notSeen("the file was not opened");
    const size_t opened = seen.trace.find(callOf("DoFileOpen", seen.parts.first));
    const bool isSaved =
        seen.trace.find(callOf("CFile_DoFileSave", seen.parts.first), opened) != HostTrace::none;
    return keptIf(isSaved, "the host was not asked to save " + seen.parts.first + " after that");
}

Sight judgeUnchanged(const Seen& seen)
{
    const auto isChanged = seen.trace.findValue("db_changed");
    if (!isChanged)
        return notSeen(seen.cut);
    return keptIf(*isChanged == "false", "the host regards the document as changed");
}

Sight judgeOtherMark(const Seen& seen)
{
    if (!hasReached(seen, RequestStep::otherMark))
        return notSeen(seen.cut);
    return keptIf(isOpened(seen, seen.parts.marked),
                  "a request that begins with ### in place of the mark was not opened");
}

Sight judgeWithoutId(const Seen& seen)
{
    if (!hasReached(seen, RequestStep::malformed))
        return notSeen(seen.cut);
    return keptIf(!isOpened(seen, seen.parts.withoutId), "its file was opened");
}

Sight judgeMalformed(const Seen& seen)
{
    if (!hasReached(seen, RequestStep::otherMark))
        return notSeen(seen.cut);
    if (!hasReached(seen, RequestStep::malformed))
        return broken(seen.cut);
    return keptIf(isOpened(seen, seen.parts.afterMalformed),
                  "the correct request after it was not carried out");
}

Sight judgeNewFile(const Seen& seen)
{
    if (!hasReached(seen, RequestStep::newFile))
        return notSeen(seen.cut);
    const size_t posted = seen.trace.find("post_FT_command(\"Mastercam\", \"OnFileNew\")");
    return keptIf(posted != HostTrace::none,
                  "the host did not get the command OnFileNew of Mastercam");
}

// The load of the file before may still be running on another thread.
Sight judgeUnchangedBeforeNew(const Seen& seen)
{
    const std::vector<std::string>& lines = seen.trace.lines();
    const size_t posted = seen.trace.find("post_FT_command(");
    if (posted == HostTrace::none)
        return notSeen("the host did not get the command OnFileNew");
    const std::string thread = lines[posted].substr(0, lines[posted].find(' ') + 1);
    size_t before = posted;
    while (before > 0 && !lines[before - 1].starts_with(thread))
        --before;
    return keptIf(before > 0 && lines[before - 1] == thread + "set_db_unchanged()",
                  "the call before was " + (before > 0 ? lines[before - 1] : "none"));
}

Sight judgeCheckIn(const Seen& seen)
{
    if (!hasReached(seen, RequestStep::checkIn))
        return notSeen(seen.cut);
    const size_t closed = seen.trace.find("m_fclose(null, 0, null)");
    if (seen.checkIns == 0 || closed == HostTrace::none)
        return broken("the host was not asked to close the file");
    const size_t unchanged = seen.trace.find("set_db_unchanged()", closed);
    return keptIf(seen.trace.find("OnFileNew", unchanged) != HostTrace::none,
                  "after closing, the document was not marked unchanged and then replaced");
}

Sight judgeBareCheckIn(const Seen& seen)
{
    if (!hasReached(seen, RequestStep::bareCheckIn))
        return notSeen(seen.cut);
    return keptIf(seen.bareCheckIns == 1, "the host was asked to close its file " +
                                              std::to_string(seen.bareCheckIns) + " times");
}

// Nothing but the two check-ins closes a file.
Sight judgeCheckInWord(const Seen& seen)
{
    if (!hasReached(seen, RequestStep::bareCheckIn))
        return notSeen(seen.cut);
    const size_t others = seen.trace.count("m_fclose(") - seen.checkIns - seen.bareCheckIns;
    return keptIf(others == 0, "CHECKIN with a line feed, or checkin, closed the host's file");
}

Sight judgeMissingFile(const Seen& seen)
{
    if (!hasReached(seen, RequestStep::missingFile))
        return notSeen(seen.cut);
    return keptIf(seen.trace.has("message-box(\"TORVA ZEM\", \"The file does not exist.\")"),
                  "no message box \"The file does not exist.\" was shown");
}

// ---- while the host is busy --------------------------------------------------------------------

// The host is busy between two lines with this text.
Sight judgeWaiting(const Seen& seen, RequestStep step, std::string_view busy)
{
    const size_t start = seen.trace.find(busy);
    const size_t end = start == HostTrace::none ? start : seen.trace.find(busy, start + 1);
    if (end == HostTrace::none)
        return notSeen(seen.cut);
    if (seen.trace.count(opening, start, end) != 0)
        return broken("meanwhile there was: " + linesBetween(seen.trace, start + 1, end));
    return keptIf(hasReached(seen, step), "it was not carried out afterwards");
}

Sight judgeDisabled(const Seen& seen)
{
    return judgeWaiting(seen, RequestStep::busy, "main_window_enabled = \"false\"");
}

Sight judgeBackplot(const Seen& seen)
{
    return judgeWaiting(seen, RequestStep::backplot, "backplot = \"true\"");
}

Sight judgeLastOne(const Seen& seen)
{
    if (!isOpened(seen, seen.parts.waits) && !isOpened(seen, seen.parts.instead))
        return notSeen("none of the waiting requests was carried out");
    if (!isOpened(seen, seen.parts.instead))
        return broken("the first of two was carried out and not the second");
    return keptIf(!isOpened(seen, seen.parts.waits), "both of two were carried out");
}

Sight judgeLongest(const Seen& seen)
{
    if (!hasReached(seen, RequestStep::backplot))
        return notSeen(seen.cut);
    return keptIf(hasReached(seen, RequestStep::longest), seen.cut);
}

// ---- machine settings and the debug log ---------------------------------------------------------

Sight judgeMachine(const Seen& seen)
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

Sight judgeMachineGone(const Seen& seen)
{
    if (!isOpened(seen, seen.parts.first))
        return notSeen("the file was not opened");
    return keptIf(seen.haveSettingsGone, "temp\\mcsettings-<request id>.txt was still there");
}

Sight judgeOthersStay(const Seen& seen)
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
Sight judgeLog(const Seen& seen)
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

Sight judgeLogGrows(const Seen& seen)
{
    if (!hasReached(seen, RequestStep::otherMark) || seen.loadLog.empty())
        return notSeen(seen.cut.empty() ? "nothing was logged" : seen.cut);
    return keptIf(seen.loadLogAtEnd.starts_with(seen.loadLog) &&
                      seen.loadLogAtEnd.size() > seen.loadLog.size(),
                  "the lines of the first load were not followed by those of later loads");
}

constexpr JudgedRule<Seen> requestTable[] = {
    {"start.exports", "Has the fourteen entry points.", judgeExports},
    {"start.version", "Declares the version that it supports.", judgeVersion},
    {"start.command-file", "Creates an empty command file when it is opened.", judgeCommandFile},
    {"start.command-file-sharing", "Keeps the command file open with all sharing modes.",
     judgeSharing},
    {"start.host-property", "Marks the host's main window with the value 1.", judgeHostProperty},
    {"start.message-window", "Has a hidden window of the documented class.", judgeMessageWindow},
    {"start.no-port", "Opens no port of its own.", judgeGreetingPort},
    {"requests.taken", "Takes a request and empties the command file.", judgeTaken},
    {"requests.opened", "Opens the file of an open request.", judgeOpened},
    {"requests.name", "Names the document after the file, with the ending .mcam.", judgeName},
    {"requests.title", "Shows the name in the title of the main window.", judgeTitle},
    {"requests.saved", "Saves the file under its own path after the load.", judgeSavedAfterLoad},
    {"requests.unchanged", "Leaves the document marked unchanged after the load.", judgeUnchanged},
    {"requests.mark", "Skips the three bytes before the id, whatever they are.", judgeOtherMark},
    {"requests.no-id", "Opens nothing for the id -1.", judgeWithoutId},
    {"requests.malformed", "Drops a malformed request and takes the next one.", judgeMalformed},
    {"requests.new-file", "Starts a new file for a request without a path.", judgeNewFile},
    {"requests.new-file-asks-nothing", "Marks the document unchanged before that.",
     judgeUnchangedBeforeNew},
    {"requests.check-in", "Closes the file and starts a new one on a check-in.", judgeCheckIn},
    {"requests.check-in-bare", "Takes a check-in without a name.", judgeBareCheckIn},
    {"requests.check-in-word", "Takes nothing else for a check-in.", judgeCheckInWord},
    {"requests.missing-file", "Shows a message when the file does not exist.", judgeMissingFile},
    {"requests.disabled", "Lets a request wait while the main window is disabled.", judgeDisabled},
    {"requests.last-one", "Carries out only the last of the requests that wait.", judgeLastOne},
    {"requests.backplot", "Lets a request wait during a backplot.", judgeBackplot},
    {"requests.longest", "Takes a request of 65,536 bytes.", judgeLongest},
    {"machine.activated", "Activates the machine of the request's settings.", judgeMachine},
    {"machine.deleted", "Deletes the machine settings that it has read.", judgeMachineGone},
    {"machine.others-stay", "Leaves the machine settings of other requests as they are.",
     judgeOthersStay},
    {"log.steps", "Logs the seven steps of a load, each on a line with CR LF.", judgeLog},
    {"log.appended", "Appends to the log and never empties it.", judgeLogGrows},
};

} // namespace

Rules addInRequestRules()
{
    return rulesOf(requestTable);
}

Findings judgeRequests(const RequestsSeen& seen, std::int64_t tookMs)
{
    return judged(requestTable, seen, tookMs);
}

} // namespace zemlink
