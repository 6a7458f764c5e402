// What a Companion does with its commit file while hosts append to it.
#include "peer/commit_record.h"
#include "peer/text.h"
#include "tools/zemlink/verify/companion_rule_groups.h"

namespace zemlink {
namespace {

std::string recordOf(const HandedCommit& handed)
{
    return peer::formatCommitRecord({handed.id, handed.file});
}

Sight notAppended()
{
    return notSeen("no record could be appended to the commit file");
}

// Why it is useless to hand in more records; empty when one has been taken.
std::optional<Sight> noRecordYet(CompanionStage& stage)
{
    if (stage.gathered().isRecordTaken)
        return std::nullopt;
    return notSeen("not even a whole record was taken");
}

Sight handsIn(CompanionStage& stage, HandedCommit& handed, bool isAnnounced = true)
{
    if (auto useless = noRecordYet(stage))
        return *useless;
    return stage.handIn(handed, isAnnounced) ? stage.seeTaken(handed) : notAppended();
}

Sight leavesEmptyFile(CompanionStage& stage)
{
    HostsCommitFile& file = stage.commitFile();
    if (!file.hasFile())
        return notSeen("the commit file could not be created");
    file.look(); // the program has carried out several commands since it was created
    return keptIf(file.change().empty(), file.change());
}

Sight takesRecord(CompanionStage& stage)
{
    HandedCommit& handed = stage.newCommit(ownIds + 1);
    if (!stage.handIn(handed))
        return notAppended();
    Sight sight = stage.seeTaken(handed);
    stage.gathered().isRecordTaken = handed.isTaken;
    return sight;
}

Sight takesUnannouncedRecord(CompanionStage& stage)
{
    HandedCommit& handed = stage.newCommit(ownIds + 2);
    const std::int64_t start = monotonicMs();
    Sight sight = handsIn(stage, handed, false);
    if (handed.isTaken)
        stage.noteReaction(monotonicMs() - start); // up to the time between two looks
    return sight;
}

// Ids as in the interface: the largest, none, of no request, and others.
constexpr std::uint32_t idsOfSeveral[] = {ownIds + 7, 0, peer::noZemId, 2147483648, ownIds + 8};

// One notice for all, as when the others are lost.
Sight takesSeveral(CompanionStage& stage)
{
    if (auto useless = noRecordYet(stage))
        return *useless;
    std::vector<HandedCommit*>& several = stage.gathered().several;
    for (const std::uint32_t id : idsOfSeveral) {
        several.push_back(&stage.newCommit(id));
        if (!stage.handIn(*several.back(), false))
            return notAppended();
    }
    stage.announce(*several.front());
    for (HandedCommit* handed : several)
        if (Sight sight = stage.seeTaken(*handed); sight.state != RuleState::kept)
            return sight;
    return {};
}

Sight keepsIds(CompanionStage& stage)
{
    bool isSeen = false;
    for (const HandedCommit* handed : stage.gathered().several)
        for (const LoggedCommit& logged :
             stage.log().commitsOf(peer::toUtf8(handed->file), handed->from)) {
            isSeen = true;
            const std::string expected = std::to_string(handed->id);
            if (logged.id != expected)
                return broken("The record has id " + expected + ", the event `commit` has id " +
                              (logged.id.empty() ? "none" : logged.id) + '.');
        }
    return isSeen ? Sight{} : notSeen("none of several records was taken");
}

// Two writes under one lock each, as when a host is interrupted between them.
Sight waitsForRest(CompanionStage& stage)
{
    if (auto useless = noRecordYet(stage))
        return *useless;
    HandedCommit& handed = stage.newCommit(ownIds + 3);
    const std::string record = recordOf(handed);
    const size_t half = 8 + handed.file.size(); // the middle of the name
    const size_t before = stage.log().size();
    if (!stage.commitFile().append(record.substr(0, half)))
        return notAppended();
    stage.announce(handed);
    stage.giveItTime();
    const bool isTakenEarly = stage.log().hasCommits(before);
    if (!stage.commitFile().append(record.substr(half)))
        return notAppended();
    handed.since = monotonicMs();
    stage.announce(handed);
    if (isTakenEarly)
        return broken("A commit was taken when only the first " + std::to_string(half) + " of " +
                      std::to_string(record.size()) + " bytes of the record were written.");
    return stage.seeTaken(handed);
}

// The whole record is there, and its host has not unlocked it yet.
Sight respectsLock(CompanionStage& stage)
{
    if (auto useless = noRecordYet(stage))
        return *useless;
    HandedCommit& handed = stage.newCommit(ownIds + 4);
    LockedRecord locked = stage.commitFile().appendLocked(recordOf(handed));
    if (!locked)
        return notAppended();
    stage.announce(handed);
    stage.giveItTime();
    const bool isTakenEarly =
        !stage.log().commitsOf(peer::toUtf8(handed.file), handed.from).empty();
    locked.release();
    handed.since = monotonicMs();
    stage.announce(handed);
    Sight sight = stage.seeTaken(handed);
    return isTakenEarly ? broken("A record was taken while its host had its bytes locked.") : sight;
}

// What remains of a longer record after another host has written a shorter one to the same place.
Sight findsRecordAfterOthersBytes(CompanionStage& stage)
{
    if (auto useless = noRecordYet(stage))
        return *useless;
    const std::string rest = recordOf({L"C:\\somewhere\\a longer name.mcam"}).substr(30);
    if (!stage.commitFile().append(rest))
        return notAppended();
    return handsIn(stage, stage.newCommit(ownIds + 5));
}

Sight readsWhatEarlierHandleWrites(CompanionStage& stage)
{
    if (auto useless = noRecordYet(stage))
        return *useless;
    HandedCommit& handed = stage.newCommit(ownIds + 6);
    if (!stage.commitFile().appendWithFirstHandle(recordOf(handed)))
        return notAppended();
    stage.announce(handed);
    return stage.seeTaken(handed);
}

// Longer than a path without the prefix `\\?\` can be, and with characters outside every code page.
Sight takesLongName(CompanionStage& stage)
{
    std::wstring file = L"C:\\zemlink verify \u00E4\u4E2D\\";
    while (file.size() < 2000)
        file += L"a folder\\";
    return handsIn(stage, stage.newCommitOf(file + L"part.mcam", ownIds + 9));
}

Sight takesOnce(CompanionStage& stage)
{
    bool isSeen = false;
    for (const auto& handed : stage.commits()) {
        const size_t times = stage.log().commitsOf(peer::toUtf8(handed->file), handed->from).size();
        isSeen = isSeen || times != 0;
        if (times > 1)
            return broken("A commit was taken " + std::to_string(times) +
                          " times: " + peer::toUtf8(handed->file));
    }
    return isSeen ? Sight{} : notSeen("no commit was taken");
}

// What a host met when it used the file. Without a record that was taken it is unknown whether the
// program has opened the file at all.
template <const std::string& (HostsCommitFile::*problem)() const>
Sight leavesHostsAlone(CompanionStage& stage)
{
    stage.commitFile().look();
    if (const std::string& text = (stage.commitFile().*problem)(); !text.empty())
        return broken(text);
    if (!stage.gathered().isRecordTaken)
        return notSeen("no record was taken, so it may never have opened the file");
    return {};
}

} // namespace

CheckedRules commitRules()
{
    return {
        {{"commits.empty-file", "Leaves an empty commit file as it is."},
         Needs::instance,
         leavesEmptyFile},
        {{"commits.record", "Takes a record that a host appends and announces."},
         Needs::log,
         takesRecord},
        {{"commits.no-notice", "Takes a record whose notice was lost."},
         Needs::log,
         takesUnannouncedRecord},
        {{"commits.several", "Takes several records of which one is announced."},
         Needs::log,
         takesSeveral},
        {{"commits.ids", "Takes each id as it is, also 0 and 4294967295."}, Needs::log, keepsIds},
        {{"commits.half", "Leaves the first part of a record until the rest is there."},
         Needs::log,
         waitsForRest},
        {{"commits.lock", "Leaves a record while its host has it locked."},
         Needs::log,
         respectsLock},
        {{"commits.other-bytes", "Takes a record that follows bytes which are not one."},
         Needs::log,
         findsRecordAfterOthersBytes},
        {{"commits.early-handle", "Takes what a host writes with a handle opened long before."},
         Needs::log,
         readsWhatEarlierHandleWrites},
        {{"commits.long-name", "Takes a record with a name of 2,000 characters."},
         Needs::log,
         takesLongName},
        {{"commits.once", "Takes each commit once."}, Needs::log, takesOnce},
        {{"commits.sharing", "Opens the commit file so that hosts can open it at any time."},
         Needs::instance,
         leavesHostsAlone<&HostsCommitFile::openError>},
        {{"commits.own-lock", "Locks nothing from the end of the commit file on."},
         Needs::instance,
         leavesHostsAlone<&HostsCommitFile::lockError>},
        {{"commits.file-stays", "Never cuts, replaces, renames or deletes the commit file."},
         Needs::instance,
         leavesHostsAlone<&HostsCommitFile::change>},
    };
}

} // namespace zemlink
