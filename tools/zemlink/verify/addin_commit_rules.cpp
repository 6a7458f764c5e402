#include "tools/zemlink/verify/addin_commit_rules.h"

#include "peer/commit_record.h"
#include "peer/nc_queue_file.h"
#include "peer/text.h"
#include "peer/wire_constants.h"
#include "tools/zemlink/reports/report.h"
#include "tools/zemlink/verify/judged_rule.h"

#include <algorithm>
#include <string_view>

namespace zemlink {
namespace {

using Commits = CommitsSeen;

bool hasReached(const Commits& seen, CommitStep step)
{
    return seen.reached >= step;
}

// ---- What the exchanges have in common ---------------------------------------------------------

std::string addedIn(const Commits& seen, CommitStep step)
{
    const auto growth = seen.growth.find(step);
    return growth == seen.growth.end() ? std::string() : growth->second.added();
}

// The name as a record has it.
std::string asInRecord(const std::string& name)
{
    constexpr size_t headBytes = 8;
    return peer::formatCommitRecord({0, peer::fromUtf8(name)}).substr(headBytes);
}

size_t countNotices(const Commits& seen, std::string_view start)
{
    const auto begins = [&](const ReceivedNotice& notice) {
        return std::string_view(notice.bytes).starts_with(start);
    };
    return static_cast<size_t>(std::count_if(seen.notices.begin(), seen.notices.end(), begins));
}

std::string noticesText(const Commits& seen)
{
    std::string text;
    for (const ReceivedNotice& notice : seen.notices)
        text += (text.empty() ? "" : ", ") + ('"' + visible(notice.bytes.substr(0, 100)) + '"');
    return text.empty() ? "no notices" : text;
}

// The only notice that begins like this is exactly this one.
Sight judgeNotice(const Commits& seen, CommitStep step, const std::string& start,
                  const std::string& rest)
{
    if (!hasReached(seen, step))
        return notSeen(seen.cut);
    for (const ReceivedNotice& notice : seen.notices)
        if (notice.bytes.starts_with(start))
            return keptIf(notice.bytes == start + rest, '"' + visible(notice.bytes) +
                                                            "\" arrived and not \"" +
                                                            visible(start + rest) + '"');
    return broken("none arrived that begins with " + start + "; there were: " + noticesText(seen));
}

std::string commitNoticeStart(CommitStep step)
{
    return std::string(peer::commitNotice) + std::to_string(idOf(step)) + '|';
}
std::string sheetNoticeStart(CommitStep step)
{
    return std::string(peer::setupSheetNotice) + std::to_string(idOf(step)) + ';';
}

// By its record or by its notice, so that a mistake in one of them breaks only the rule for that.
bool isCommittedAs(const Commits& seen, CommitStep step, const std::string& name)
{
    return addedIn(seen, step).find(asInRecord(name)) != std::string::npos ||
           countNotices(seen, commitNoticeStart(step) + name) != 0;
}

Sight judgeCommittedAs(const Commits& seen, CommitStep step, const std::string& name)
{
    if (!hasReached(seen, step))
        return notSeen(seen.cut);
    if (addedIn(seen, step).empty() && countNotices(seen, commitNoticeStart(step)) == 0)
        return notSeen("nothing was committed");
    return keptIf(isCommittedAs(seen, step, name), "it was not committed as " + name);
}

// ---- commits -----------------------------------------------------------------------------------

Sight judgeSaved(const Commits& seen)
{
    if (!hasReached(seen, CommitStep::first))
        return notSeen(seen.cut);
    const size_t pictured = seen.trace.find("screen_to_bitmap_file(");
    const size_t loaded = seen.trace.find(callOf("DoFileOpen", seen.parts.first));
    const std::string call = callOf("CFile_DoFileSave", seen.parts.first) + ", main, false, true)";
    const size_t saved = seen.trace.find(call, loaded);
    if (saved == HostTrace::none)
        return broken("the host was not asked to save " + seen.parts.first);
    return keptIf(pictured == HostTrace::none || saved < pictured,
                  "it was saved after the screen picture");
}

// `122 bytes were appended, expected: 124; from byte 122 on: nothing, expected: 6D00`
std::string differenceText(const std::string& added, const std::string& expected)
{
    constexpr size_t shownBytes = 8;
    const size_t common = std::min(added.size(), expected.size());
    size_t at = 0;
    while (at < common && added[at] == expected[at])
        ++at;
    const auto shown = [at](const std::string& bytes) {
        return at < bytes.size() ? hexadecimal(bytes.substr(at, shownBytes)) : "nothing";
    };
    return std::to_string(added.size()) +
           " bytes were appended, expected: " + std::to_string(expected.size()) + "; from byte " +
           std::to_string(at) + " on: " + shown(added) + ", expected: " + shown(expected);
}

Sight judgeRecord(const Commits& seen)
{
    if (!hasReached(seen, CommitStep::first))
        return notSeen(seen.cut);
    const CommitGrowth& growth = seen.growth.at(CommitStep::first);
    const std::string expected = peer::formatCommitRecord(
        {static_cast<std::uint32_t>(idOf(CommitStep::first)), peer::fromUtf8(seen.parts.first)});
    if (!growth.areEarlierBytesKept())
        return keptIf(growth.after.find(expected) != std::string::npos,
                      "the file has no such record");
    return keptIf(growth.added() == expected, differenceText(growth.added(), expected));
}

Sight judgeAppended(const Commits& seen)
{
    if (!hasReached(seen, CommitStep::first))
        return notSeen(seen.cut);
    const CommitGrowth& growth = seen.growth.at(CommitStep::first);
    if (growth.before == growth.after)
        return notSeen("nothing was written to the commit file");
    return keptIf(growth.areEarlierBytesKept(), "an earlier record was overwritten");
}

Sight judgeReaderLock(const Commits& seen)
{
    if (!hasReached(seen, CommitStep::unicode))
        return notSeen(seen.cut);
    return keptIf(!addedIn(seen, CommitStep::unicode).empty(),
                  "nothing was appended while another program had locked the bytes before");
}

Sight judgeUnicode(const Commits& seen)
{
    const std::string added = addedIn(seen, CommitStep::unicode);
    if (added.empty())
        return notSeen(seen.cut.empty() ? "nothing was appended" : seen.cut);
    const std::string name = asInRecord(seen.parts.unicode);
    // Without the last units, which another rule is about.
    constexpr size_t endBytes = 2 * std::string_view(".mcam").size();
    return keptIf(added.find(name.substr(0, name.size() - endBytes)) != std::string::npos,
                  "the name gr\u00F6\u00DFe was not among the bytes that were appended");
}

Sight judgeLock(const Commits& seen)
{
    if (seen.locks.isWholeRecord())
        return {};
    constexpr size_t fewestCommits = 40; // of a correct add-in, some of these are seen
    if (seen.watchedCommits < fewestCommits)
        return notSeen(seen.cut.empty() ? "there were too few commits to watch" : seen.cut);
    const std::string where = seen.locks.atFirstByte ? "the last byte of a record was never locked"
                              : seen.locks.atLastByte
                                  ? "the first byte of a record was never locked"
                                  : "no byte of a record was ever locked";
    return broken(where + " during " + std::to_string(seen.watchedCommits) + " commits and " +
                  std::to_string(seen.locks.tries) + " tries");
}

Sight judgeLockBefore(const Commits& seen)
{
    if (!seen.locks.atFirstByte)
        return notSeen("no lock was seen");
    return keptIf(!seen.locks.before, "the last byte of an earlier record was locked meanwhile");
}

Sight judgeCommitNotice(const Commits& seen)
{
    return judgeNotice(seen, CommitStep::first, commitNoticeStart(CommitStep::first),
                       seen.parts.first + '\n');
}

Sight judgePicture(const Commits& seen)
{
    if (!hasReached(seen, CommitStep::first))
        return notSeen(seen.cut);
    return keptIf(seen.pictureStart == peer::bitmapStart,
                  seen.pictureStart.empty() ? "there was no commit\\screendump.bmp"
                                            : "commit\\screendump.bmp was not a bitmap");
}

// The times of files are accurate to a few milliseconds.
Sight judgePictureFirst(const Commits& seen)
{
    if (!hasReached(seen, CommitStep::first) || seen.pictureStart.empty())
        return notSeen(seen.cut.empty() ? "there was no screen picture" : seen.cut);
    if (addedIn(seen, CommitStep::first).empty())
        return notSeen("there was no record");
    return keptIf(seen.pictureTime <= seen.recordTime,
                  "it was written after the record, by the times of the files");
}

Sight judgeHostSave(const Commits& seen)
{
    if (!hasReached(seen, CommitStep::hostSave))
        return notSeen(seen.cut);
    return keptIf(isCommittedAs(seen, CommitStep::hostSave, seen.parts.hostSave),
                  "nothing was committed after the event 5");
}

Sight judgeForgotten(const Commits& seen)
{
    const size_t notices = countNotices(seen, commitNoticeStart(CommitStep::hostSave));
    if (!hasReached(seen, CommitStep::hostSave) || notices == 0)
        return notSeen(seen.cut.empty() ? "nothing was committed after the event 5" : seen.cut);
    return keptIf(notices == 1, "it was committed after the events 6 and 5 too");
}

Sight judgeAfterCheckIn(const Commits& seen)
{
    if (!hasReached(seen, CommitStep::afterCheckIn))
        return notSeen(seen.cut);
    const std::string expected =
        peer::formatCommitRecord({0, peer::fromUtf8(seen.parts.afterCheckIn)});
    const std::string added = addedIn(seen, CommitStep::afterCheckIn);
    const std::string notice = std::string(peer::commitNotice) + "0|" + seen.parts.afterCheckIn;
    return keptIf(added.starts_with(expected) || countNotices(seen, notice) != 0,
                  differenceText(added, expected));
}

Sight judgeMessage(const Commits& seen, CommitStep step, const std::string& part,
                   std::string_view text)
{
    if (!hasReached(seen, step))
        return notSeen(seen.cut);
    const size_t from = seen.trace.find(callOf("DoFileOpen", part));
    const std::string box = "message-box(\"TORVA ZEM\", \"" + std::string(text) + "\")";
    return keptIf(from != HostTrace::none && seen.trace.find(box, from) != HostTrace::none,
                  "no message box \"" + std::string(text) + "\" was shown");
}

// A commit that fails must leave nothing that looks like one.
Sight judgeFailure(const Commits& seen, CommitStep step, const std::string& part,
                   std::string_view text)
{
    const Sight shown = judgeMessage(seen, step, part, text);
    if (shown.state != RuleState::kept)
        return shown;
    if (countNotices(seen, commitNoticeStart(step)) != 0)
        return broken("a notice was sent all the same");
    return keptIf(addedIn(seen, step).empty(), "a record was written all the same");
}

Sight judgeFailedSave(const Commits& seen)
{
    return judgeFailure(seen, CommitStep::failedSave, seen.parts.failedSave,
                        "Failed to save file.");
}

Sight judgeFailedCommit(const Commits& seen)
{
    if (hasReached(seen, CommitStep::heldFile) && !seen.isFileHeld)
        return notSeen("another program had the commit file open");
    return judgeFailure(seen, CommitStep::heldFile, seen.parts.heldFile,
                        "Failed to commit file to ZEM.");
}

Sight judgeFailedLoad(const Commits& seen)
{
    return judgeMessage(seen, CommitStep::unreadable, seen.parts.unreadable,
                        "Failed to load file.");
}

// ---- the other notices -------------------------------------------------------------------------

Sight judgeConnections(const Commits& seen)
{
    if (seen.notices.empty())
        return notSeen(seen.cut.empty() ? "no notice arrived" : seen.cut);
    for (const ReceivedNotice& notice : seen.notices) {
        if (notice.isLate)
            return broken("a connection was left open");
        if (std::count(notice.bytes.begin(), notice.bytes.end(), '\n') > 1)
            return broken("one connection brought \"" + visible(notice.bytes) + '"');
    }
    return {};
}

Sight judgeSheetNotice(const Commits& seen)
{
    return judgeNotice(seen, CommitStep::sheets, sheetNoticeStart(CommitStep::sheets),
                       "C:\\sheets\\first.xml\n");
}

Sight judgeMenuNotice(const Commits& seen)
{
    return judgeNotice(seen, CommitStep::sheets,
                       sheetNoticeStart(CommitStep::sheets) + "C:\\sheets\\menu", ".xml\n");
}

Sight judgeNoSheet(const Commits& seen)
{
    if (!hasReached(seen, CommitStep::sheets))
        return notSeen(seen.cut);
    const std::string start = sheetNoticeStart(CommitStep::sheets);
    for (const ReceivedNotice& notice : seen.notices)
        if (notice.bytes == start + '\n' || notice.bytes == start)
            return broken('"' + visible(notice.bytes) + "\" was sent");
    return {};
}

Sight judgeTooLongNotice(const Commits& seen)
{
    if (!hasReached(seen, CommitStep::sheets))
        return notSeen(seen.cut);
    const auto isTooLong = [](const ReceivedNotice& notice) {
        return notice.bytes.size() >= peer::longestNoticeBytes;
    };
    return keptIf(std::none_of(seen.notices.begin(), seen.notices.end(), isTooLong),
                  "one of 1,024 bytes or more was sent");
}

constexpr std::string_view menuRows =
    R"(menu(!"TORVA ZEM", -, "Open TORVA ZEM", "Website", "About", "Tools", "Import NC-Files")";

Sight judgeMenu(const Commits& seen)
{
    const size_t shown = seen.trace.find("menu(");
    if (shown == HostTrace::none)
        return notSeen(seen.cut.empty() ? "the host did not trace the menu" : seen.cut);
    const std::string& line = seen.trace.lines()[shown];
    return keptIf(line.find(menuRows) != std::string::npos, "it was " + line);
}

Sight judgeRecentFiles(const Commits& seen)
{
    const size_t shown = seen.trace.find("menu(");
    if (shown == HostTrace::none)
        return notSeen(seen.cut.empty() ? "the host did not trace the menu" : seen.cut);
    const std::string& line = seen.trace.lines()[shown];
    const std::string rows = ", -, \"" + seen.parts.sheets + "\", \"" + seen.parts.second +
                             "\", \"" + seen.parts.first + "\")";
    return keptIf(line.ends_with(rows), "it was " + line);
}

// ---- the NC queue ------------------------------------------------------------------------------

// Why nothing can be said about the queue of this step; empty: it can.
std::string causeForNoQueue(const Commits& seen, CommitStep step, const std::string& part)
{
    if (!hasReached(seen, step))
        return seen.cut;
    const size_t opened = seen.trace.find(callOf("DoFileOpen", part));
    const bool isOpen =
        opened != HostTrace::none && seen.trace.lines()[opened].ends_with("-> true");
    return isOpen ? "" : "the host did not open a part with operations";
}

std::string queueFile(const Commits& seen, CommitStep step)
{
    return seen.folder + "\\temp\\ncqueue-" + std::to_string(idOf(step)) + ".txt";
}

bool hasTextLineEnds(std::string_view bytes)
{
    for (size_t i = 0; i < bytes.size(); ++i)
        if (bytes[i] == '\n' && (i == 0 || bytes[i - 1] != '\r'))
            return false;
    return bytes.ends_with("\r\n");
}

// Two programs, sorted, under the name of their top group.
bool arePrograms(const Commits& seen, const peer::QueueLines& lines)
{
    const std::string start = seen.folder + "\\nc\\PLATE-";
    const auto is = [&](const std::optional<peer::QueueEntry>& line, const char* rest) {
        return line && line->program == start + rest && line->group == "Mill 3-axis";
    };
    return lines.size() == 2 && is(lines[0], "1.NC") && is(lines[1], "2.NC");
}

Sight judgeQueueFile(const Commits& seen)
{
    const std::string cause = causeForNoQueue(seen, CommitStep::queue, seen.parts.queue);
    if (!cause.empty())
        return notSeen(cause);
    if (!seen.queue)
        return broken("there was no file " + queueFile(seen, CommitStep::queue));
    return keptIf(arePrograms(seen, peer::parseNcQueue(*seen.queue)) &&
                      hasTextLineEnds(*seen.queue),
                  "its content was \"" + visible(*seen.queue) + '"');
}

Sight judgePathNumbers(const std::string& cause, const std::optional<std::string>& queue,
                       std::int32_t expected)
{
    if (!cause.empty())
        return notSeen(cause);
    const peer::QueueLines lines = peer::parseNcQueue(queue.value_or(""));
    if (lines.empty())
        return notSeen("the queue file had no lines");
    for (const std::optional<peer::QueueEntry>& line : lines)
        if (!line)
            return notSeen("the queue file had a line without a number");
        else if (line->pathNumber != expected)
            return broken("it was " + std::to_string(line->pathNumber) + " and not " +
                          std::to_string(expected));
    return {};
}

Sight judgePathNumber(const Commits& seen)
{
    constexpr std::int32_t ofMachineSettings = 3;
    return judgePathNumbers(causeForNoQueue(seen, CommitStep::queue, seen.parts.queue), seen.queue,
                            ofMachineSettings);
}

Sight judgeNoPathNumber(const Commits& seen)
{
    constexpr std::int32_t none = -1;
    return judgePathNumbers(
        causeForNoQueue(seen, CommitStep::queueWithoutSettings, seen.parts.queueWithoutSettings),
        seen.queueWithoutSettings, none);
}

Sight judgeQueueNotice(const Commits& seen)
{
    const std::string cause = causeForNoQueue(seen, CommitStep::queue, seen.parts.queue);
    if (!cause.empty())
        return notSeen(cause);
    return judgeNotice(seen, CommitStep::queue,
                       std::string(peer::ncQueueNotice) + queueFile(seen, CommitStep::queue), "\n");
}

Sight judgeNoQueue(const Commits& seen)
{
    if (!hasReached(seen, CommitStep::sheets))
        return notSeen(seen.cut);
    const std::string notice =
        std::string(peer::ncQueueNotice) + queueFile(seen, CommitStep::sheets);
    if (countNotices(seen, notice) != 0)
        return broken("a notice was sent");
    return keptIf(!seen.hasEmptyQueue, "a file was written");
}

// ---- the settings ------------------------------------------------------------------------------

Sight judgeRedirected(const Commits& seen)
{
    return judgeCommittedAs(seen, CommitStep::redirected, seen.folder + "\\tmp\\redirected.mcam");
}

Sight judgeInside(const Commits& seen)
{
    return judgeCommittedAs(seen, CommitStep::redirected, seen.parts.inside);
}

Sight judgeLastSetting(const Commits& seen)
{
    return judgeCommittedAs(seen, CommitStep::lastSetting, seen.parts.lastSetting);
}

// Two saves, each with its own.
Sight judgeToolsSetting(const Commits& seen)
{
    if (!hasReached(seen, CommitStep::redirected))
        return notSeen(seen.cut);
    const size_t sheets = countNotices(seen, sheetNoticeStart(CommitStep::redirected));
    return keptIf(sheets == 2, std::to_string(sheets) + " setup sheets came with two saves");
}

Sight judgeToolsCase(const Commits& seen)
{
    if (!hasReached(seen, CommitStep::lastSetting))
        return notSeen(seen.cut);
    return keptIf(countNotices(seen, sheetNoticeStart(CommitStep::lastSetting)) == 0,
                  "a setup sheet was sent for AlwaysSaveTools=Y");
}

Sight judgeToolsWithoutRequest(const Commits& seen)
{
    if (!hasReached(seen, CommitStep::afterCheckIn))
        return notSeen(seen.cut);
    const std::string notice = std::string(peer::setupSheetNotice) + "0;";
    return keptIf(countNotices(seen, notice) == 0, "a setup sheet was sent for request id 0");
}

Sight judgeCatia(const Commits& seen)
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

constexpr JudgedRule<Commits> commitTable[] = {
    {"commit.saved-first", "Has the host save the document before the picture.", judgeSaved},
    {"commit.picture", "Leaves a picture of the screen.", judgePicture},
    {"commit.picture-first", "Leaves the picture before it writes the record.", judgePictureFirst},
    {"commit.record", "Writes a record of the id, the length and the name.", judgeRecord},
    {"commit.unicode", "Writes the name in UTF-16, whatever its characters.", judgeUnicode},
    {"commit.appended", "Appends the record to those that are there.", judgeAppended},
    {"commit.lock", "Locks the whole record while it writes it.", judgeLock},
    {"commit.lock-only-record", "Locks no bytes of earlier records.", judgeLockBefore},
    {"commit.reader-lock", "Appends while a reader has locked the earlier records.",
     judgeReaderLock},
    {"commit.notice", "Sends the notice ZEMID with the id and the name.", judgeCommitNotice},
    {"commit.host-save", "Commits a file of the Companion when the host has saved it.",
     judgeHostSave},
    {"commit.forgotten", "Commits nothing after the host has left the file.", judgeForgotten},
    {"commit.check-in-id", "Commits with the id 0 after a check-in.", judgeAfterCheckIn},
    {"commit.failed-save", "Commits nothing that the host cannot save.", judgeFailedSave},
    {"commit.failed-record", "Shows a message when the record cannot be written.",
     judgeFailedCommit},
    {"notices.connection", "Sends each notice over a connection of its own and closes it.",
     judgeConnections},
    {"notices.setup-sheet", "Sends the path of the first setup sheet.", judgeSheetNotice},
    {"notices.no-sheet", "Sends nothing without a setup sheet.", judgeNoSheet},
    {"notices.length", "Sends no notice of 1,024 bytes or more.", judgeTooLongNotice},
    {"menu.rows", "Shows its seven rows in the menu.", judgeMenu},
    {"menu.recent-files", "Shows the files of open requests in the menu, newest first.",
     judgeRecentFiles},
    {"menu.tools", "Sends the setup sheet from the menu.", judgeMenuNotice},
    {"queue.file", "Writes the NC programs that exist, once each and in order.", judgeQueueFile},
    {"queue.path-number", "Writes the NC-path number of the machine settings.", judgePathNumber},
    {"queue.no-path-number", "Writes -1 without machine settings.", judgeNoPathNumber},
    {"queue.notice", "Sends the notice IMPORTNCQUEUE with the path of the file.", judgeQueueNotice},
    {"queue.nothing", "Writes and sends nothing for a part without operations.", judgeNoQueue},
    {"settings.ftp", "Commits a file from elsewhere under tmp with UseFtpServer=y.",
     judgeRedirected},
    {"settings.ftp-inside", "Commits a file in the installation folder under its own name.",
     judgeInside},
    {"settings.last-line", "Takes the last line that contains a key.", judgeLastSetting},
    {"settings.tools", "Sends the setup sheet with each save with AlwaysSaveTools=y.",
     judgeToolsSetting},
    {"settings.tools-case", "Sends none with AlwaysSaveTools=Y.", judgeToolsCase},
    {"settings.tools-no-request", "Sends none for the request id 0.", judgeToolsWithoutRequest},
    {"settings.catia", "Wakes the host's CATIA reader after a load with MCXCATIA=y.", judgeCatia},
    {"messages.failed-load", "Shows a message when the host cannot open a file.", judgeFailedLoad},
};

} // namespace

Rules addInCommitRules()
{
    return rulesOf(commitTable);
}

Findings judgeCommits(const CommitsSeen& seen, std::int64_t tookMs)
{
    return judged(commitTable, seen, tookMs);
}

} // namespace zemlink
