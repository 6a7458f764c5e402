#include "tools/zemlink/verify/addin_rule_groups.h"

#include "peer/commit_record.h"
#include "peer/text.h"
#include "peer/wire_constants.h"
#include "tools/zemlink/reports/report.h"
#include "tools/zemlink/verify/addin_commit_evidence.h"

#include <algorithm>
#include <string_view>

namespace zemlink {
namespace {

Sight judgeSaved(const CommitsSeen& seen)
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

Sight judgeRecord(const CommitsSeen& seen)
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

Sight judgeAppended(const CommitsSeen& seen)
{
    if (!hasReached(seen, CommitStep::first))
        return notSeen(seen.cut);
    const CommitGrowth& growth = seen.growth.at(CommitStep::first);
    if (growth.before == growth.after)
        return notSeen("nothing was written to the commit file");
    return keptIf(growth.areEarlierBytesKept(), "an earlier record was overwritten");
}

Sight judgeReaderLock(const CommitsSeen& seen)
{
    if (!hasReached(seen, CommitStep::unicode))
        return notSeen(seen.cut);
    return keptIf(!addedIn(seen, CommitStep::unicode).empty(),
                  "nothing was appended while another program had locked the bytes before");
}

Sight judgeUnicode(const CommitsSeen& seen)
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

Sight judgeLock(const CommitsSeen& seen)
{
    if (!seen.cut.empty())
        return notSeen(seen.cut);
    if (seen.locks.isWholeRecord())
        return {};
    if (seen.locks.records < LockWatch::enoughRecords)
        return notSeen("there were too few commits to see it");
    const std::string where =
        seen.locks.atFirstByte ? "the last byte of a record" : "no byte of a record";
    return broken(where + " was " + (seen.locks.atFirstByte ? "never" : "ever") +
                  " locked during " + std::to_string(seen.locks.records) + " commits");
}

Sight judgeLockBefore(const CommitsSeen& seen)
{
    if (!seen.cut.empty() || !seen.locks.atFirstByte)
        return notSeen("no lock was seen");
    return keptIf(!seen.locks.before, "the last byte of an earlier record was locked meanwhile");
}

Sight judgeCommitNotice(const CommitsSeen& seen)
{
    return judgeNotice(seen, CommitStep::first, commitNoticeStart(CommitStep::first),
                       seen.parts.first + '\n');
}

Sight judgePicture(const CommitsSeen& seen)
{
    if (!hasReached(seen, CommitStep::first))
        return notSeen(seen.cut);
    return keptIf(seen.pictureStart == peer::bitmapStart,
                  seen.pictureStart.empty() ? "there was no commit\\screendump.bmp"
                                            : "commit\\screendump.bmp was not a bitmap");
}

// The times of files are accurate to a few milliseconds.
Sight judgePictureFirst(const CommitsSeen& seen)
{
    if (!hasReached(seen, CommitStep::first) || seen.pictureStart.empty())
        return notSeen(seen.cut.empty() ? "there was no screen picture" : seen.cut);
    if (addedIn(seen, CommitStep::first).empty())
        return notSeen("there was no record");
    return keptIf(seen.pictureTime <= seen.recordTime,
                  "it was written after the record, by the times of the files");
}

Sight judgeHostSave(const CommitsSeen& seen)
{
    if (!hasReached(seen, CommitStep::hostSave))
        return notSeen(seen.cut);
    return keptIf(isCommittedAs(seen, CommitStep::hostSave, seen.parts.hostSave),
                  "nothing was committed after the event 5");
}

Sight judgeForgotten(const CommitsSeen& seen)
{
    const size_t notices = countNotices(seen, commitNoticeStart(CommitStep::hostSave));
    if (!hasReached(seen, CommitStep::hostSave) || notices == 0)
        return notSeen(seen.cut.empty() ? "nothing was committed after the event 5" : seen.cut);
    return keptIf(notices == 1, "it was committed after the events 6 and 5 too");
}

Sight judgeAfterCheckIn(const CommitsSeen& seen)
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

// A commit that fails must leave nothing that looks like one.
Sight judgeFailure(const CommitsSeen& seen, CommitStep step, const std::string& part,
                   std::string_view text)
{
    Sight shown = judgeMessage(seen, step, part, text);
    if (shown.state != RuleState::kept)
        return shown;
    if (countNotices(seen, commitNoticeStart(step)) != 0)
        return broken("a notice was sent all the same");
    return keptIf(addedIn(seen, step).empty(), "a record was written all the same");
}

Sight judgeFailedSave(const CommitsSeen& seen)
{
    return judgeFailure(seen, CommitStep::failedSave, seen.parts.failedSave,
                        "Failed to save file.");
}

Sight judgeFailedCommit(const CommitsSeen& seen)
{
    if (hasReached(seen, CommitStep::heldFile) && !seen.isFileHeld)
        return notSeen("another program had the commit file open");
    return judgeFailure(seen, CommitStep::heldFile, seen.parts.heldFile,
                        "Failed to commit file to ZEM.");
}

} // namespace

std::vector<JudgedRule<CommitsSeen>> addInCommitRules()
{
    return {
        {"commit.saved-first", "Has the host save the document before the picture.", judgeSaved},
        {"commit.picture", "Leaves a picture of the screen.", judgePicture},
        {"commit.picture-first", "Leaves the picture before it writes the record.",
         judgePictureFirst},
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
    };
}

} // namespace zemlink
