#include "tools/zemlink/verify/addin_rule_groups.h"

#include <string_view>

namespace zemlink {
namespace {

constexpr char opening[] = "DoFileOpen(";

// What the trace has between two of its lines; the whole trace has both.
std::string linesBetween(const HostTrace& trace, size_t from, size_t to)
{
    std::string text;
    for (size_t i = from; i < to; ++i)
        text += (text.empty() ? "" : "; ") + trace.lines()[i];
    return text.empty() ? "nothing" : text;
}

Sight judgeTaken(const RequestsSeen& seen)
{
    return keptIf(seen.isFirstTaken, seen.cut);
}

Sight judgeOpened(const RequestsSeen& seen)
{
    return keptIf(isOpened(seen, seen.parts.first),
                  "the host was not asked to open " + seen.parts.first);
}

Sight judgeName(const RequestsSeen& seen)
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

Sight judgeTitle(const RequestsSeen& seen)
{
    const auto name = seen.trace.findValue("geo_filename");
    const auto title = seen.trace.findValue("title");
    if (!name || !title)
        return notSeen(seen.cut);
    return keptIf(title->ends_with("  " + inCapitals(*name)), "the title was \"" + *title + '"');
}

Sight judgeSavedAfterLoad(const RequestsSeen& seen)
{
    if (!isOpened(seen, seen.parts.first))
        return notSeen("the file was not opened");
    const size_t opened = seen.trace.find(callOf("DoFileOpen", seen.parts.first));
    const bool isSaved =
        seen.trace.find(callOf("CFile_DoFileSave", seen.parts.first), opened) != HostTrace::none;
    return keptIf(isSaved, "the host was not asked to save " + seen.parts.first + " after that");
}

Sight judgeUnchanged(const RequestsSeen& seen)
{
    const auto isChanged = seen.trace.findValue("db_changed");
    if (!isChanged)
        return notSeen(seen.cut);
    return keptIf(*isChanged == "false", "the host regards the document as changed");
}

Sight judgeOtherMark(const RequestsSeen& seen)
{
    if (!hasReached(seen, RequestStep::otherMark))
        return notSeen(seen.cut);
    return keptIf(isOpened(seen, seen.parts.marked),
                  "a request that begins with ### in place of the mark was not opened");
}

Sight judgeWithoutId(const RequestsSeen& seen)
{
    if (!hasReached(seen, RequestStep::malformed))
        return notSeen(seen.cut);
    return keptIf(!isOpened(seen, seen.parts.withoutId), "its file was opened");
}

Sight judgeMalformed(const RequestsSeen& seen)
{
    if (!hasReached(seen, RequestStep::otherMark))
        return notSeen(seen.cut);
    if (!hasReached(seen, RequestStep::malformed))
        return broken(seen.cut);
    return keptIf(isOpened(seen, seen.parts.afterMalformed),
                  "the correct request after it was not carried out");
}

Sight judgeNewFile(const RequestsSeen& seen)
{
    if (!hasReached(seen, RequestStep::newFile))
        return notSeen(seen.cut);
    const size_t posted = seen.trace.find("post_FT_command(\"Mastercam\", \"OnFileNew\")");
    return keptIf(posted != HostTrace::none,
                  "the host did not get the command OnFileNew of Mastercam");
}

// The load of the file before may still be running on another thread.
Sight judgeUnchangedBeforeNew(const RequestsSeen& seen)
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

Sight judgeCheckIn(const RequestsSeen& seen)
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

Sight judgeBareCheckIn(const RequestsSeen& seen)
{
    if (!hasReached(seen, RequestStep::bareCheckIn))
        return notSeen(seen.cut);
    return keptIf(seen.bareCheckIns == 1, "the host was asked to close its file " +
                                              std::to_string(seen.bareCheckIns) + " times");
}

// Nothing but the two check-ins closes a file.
Sight judgeCheckInWord(const RequestsSeen& seen)
{
    if (!hasReached(seen, RequestStep::bareCheckIn))
        return notSeen(seen.cut);
    const size_t others = seen.trace.count("m_fclose(") - seen.checkIns - seen.bareCheckIns;
    return keptIf(others == 0, "CHECKIN with a line feed, or checkin, closed the host's file");
}

Sight judgeMissingFile(const RequestsSeen& seen)
{
    if (!hasReached(seen, RequestStep::missingFile))
        return notSeen(seen.cut);
    return keptIf(seen.trace.has("message-box(\"TORVA ZEM\", \"The file does not exist.\")"),
                  "no message box \"The file does not exist.\" was shown");
}

// ---- while the host is busy --------------------------------------------------------------------

// The host is busy between two lines with this text.
Sight judgeWaiting(const RequestsSeen& seen, RequestStep step, std::string_view busy)
{
    const size_t start = seen.trace.find(busy);
    const size_t end = start == HostTrace::none ? start : seen.trace.find(busy, start + 1);
    if (end == HostTrace::none)
        return notSeen(seen.cut);
    if (seen.trace.count(opening, start, end) != 0)
        return broken("meanwhile there was: " + linesBetween(seen.trace, start + 1, end));
    return keptIf(hasReached(seen, step), "it was not carried out afterwards");
}

Sight judgeDisabled(const RequestsSeen& seen)
{
    return judgeWaiting(seen, RequestStep::busy, "main_window_enabled = \"false\"");
}

Sight judgeBackplot(const RequestsSeen& seen)
{
    return judgeWaiting(seen, RequestStep::backplot, "backplot = \"true\"");
}

Sight judgeLastOne(const RequestsSeen& seen)
{
    if (!isOpened(seen, seen.parts.waits) && !isOpened(seen, seen.parts.instead))
        return notSeen("none of the waiting requests was carried out");
    if (!isOpened(seen, seen.parts.instead))
        return broken("the first of two was carried out and not the second");
    return keptIf(!isOpened(seen, seen.parts.waits), "both of two were carried out");
}

Sight judgeLongest(const RequestsSeen& seen)
{
    if (!hasReached(seen, RequestStep::backplot))
        return notSeen(seen.cut);
    return keptIf(hasReached(seen, RequestStep::longest), seen.cut);
}

} // namespace

std::vector<JudgedRule<RequestsSeen>> addInRequestRules()
{
    return {
        {"requests.taken", "Takes a request and empties the command file.", judgeTaken},
        {"requests.opened", "Opens the file of an open request.", judgeOpened},
        {"requests.name", "Names the document after the file, with the ending .mcam.", judgeName},
        {"requests.title", "Shows the name in the title of the main window.", judgeTitle},
        {"requests.saved", "Saves the file under its own path after the load.",
         judgeSavedAfterLoad},
        {"requests.unchanged", "Leaves the document marked unchanged after the load.",
         judgeUnchanged},
        {"requests.mark", "Skips the three bytes before the id, whatever they are.",
         judgeOtherMark},
        {"requests.no-id", "Opens nothing for the id -1.", judgeWithoutId},
        {"requests.malformed", "Drops a malformed request and takes the next one.", judgeMalformed},
        {"requests.new-file", "Starts a new file for a request without a path.", judgeNewFile},
        {"requests.new-file-asks-nothing", "Marks the document unchanged before that.",
         judgeUnchangedBeforeNew},
        {"requests.check-in", "Closes the file and starts a new one on a check-in.", judgeCheckIn},
        {"requests.check-in-bare", "Takes a check-in without a name.", judgeBareCheckIn},
        {"requests.check-in-word", "Takes nothing else for a check-in.", judgeCheckInWord},
        {"requests.missing-file", "Shows a message when the file does not exist.",
         judgeMissingFile},
        {"requests.disabled", "Lets a request wait while the main window is disabled.",
         judgeDisabled},
        {"requests.last-one", "Carries out only the last of the requests that wait.", judgeLastOne},
        {"requests.backplot", "Lets a request wait during a backplot.", judgeBackplot},
        {"requests.longest", "Takes a request of 65,536 bytes.", judgeLongest},
    };
}

} // namespace zemlink
