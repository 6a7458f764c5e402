// What is left when a Companion ends, without a warning or in order, and what its next start makes
// of it.
#include "peer/commit_record.h"
#include "peer/files.h"
#include "peer/running_programs.h"
#include "peer/text.h"
#include "tools/zemlink/verify/companion_rule_groups.h"

#include <algorithm>

namespace zemlink {
namespace {

Sight neverStarted()
{
    return notSeen("hosts have not found the program");
}

// ---- The end

Sight doesNotEndByItself(CompanionStage& stage)
{
    return stage.wasFound() ? keptIf(stage.unexpectedEnd().empty(), stage.unexpectedEnd())
                            : neverStarted();
}

HandedCommit& newWaiting(CompanionStage& stage, std::uint32_t id)
{
    stage.gathered().waiting.push_back(&stage.newCommit(id));
    return *stage.gathered().waiting.back();
}

// Records that wait because the first of them is locked.
LockedRecord leaveRecordsWaiting(CompanionStage& stage)
{
    const HandedCommit& first = newWaiting(stage, ownIds + 9);
    LockedRecord locked =
        stage.commitFile().appendLocked(peer::formatCommitRecord({first.id, first.file}));
    stage.announce(first);
    stage.handIn(newWaiting(stage, ownIds + 10));
    return locked;
}

// A host may have found the window just before its process ended.
void appendLate(CompanionStage& stage)
{
    stage.gathered().late = &stage.newCommit(ownIds + 11);
    stage.handIn(*stage.gathered().late, false);
    stage.gathered().leftCommitFile = stage.commitFile().path();
}

Sight freesSemaphore(CompanionStage& stage)
{
    LockedRecord locked = leaveRecordsWaiting(stage);
    stage.commitFile(); // is that of the process which is about to end
    const bool hasSemaphore = peer::isInstanceRunning();
    const bool isKilled = stage.killInstance();
    locked.release();
    const bool isFree =
        isKilled && stage.waiting().until([] { return !peer::isInstanceRunning(); });
    appendLate(stage);
    stage.endPrograms();
    if (!isKilled)
        return notSeen("the window's process was not started by zemlink, which must not end it");
    if (!hasSemaphore)
        return notSeen("there was no semaphore");
    return keptIf(isFree, "It still existed " + stage.afterBoundText() +
                              ": another process than the window's holds it.");
}

// ---- The next start

// From now on what was left can be taken.
void noteRestart(CompanionStage& stage, HandedCommit& handed)
{
    Gathered& gathered = stage.gathered();
    gathered.restartedAt = monotonicMs();
    handed.since = gathered.restartedAt;
    for (HandedCommit* waiting : gathered.waiting)
        waiting->since = gathered.restartedAt;
    if (gathered.late != nullptr)
        gathered.late->since = gathered.restartedAt;
}

Sight takesCommitOfStart(CompanionStage& stage)
{
    if (!stage.wasFound())
        return neverStarted();
    HandedCommit& handed = stage.newCommit(peer::noZemId);
    stage.gathered().eventsBeforeRestart = stage.log().size();
    stage.start(L"--commit \"" + handed.file + L"\" --id 4294967295");
    stage.waitForInstance();
    if (stage.instance() == nullptr) { // it need not become the running instance
        stage.start(L"");
        stage.waitForInstance();
    }
    noteRestart(stage, handed);
    return stage.log().exists() ? stage.seeTaken(handed) : noLog();
}

Sight takesWaiting(CompanionStage& stage)
{
    const auto& waiting = stage.gathered().waiting;
    if (!stage.gathered().isRecordTaken || waiting.empty())
        return notSeen("no record was waiting when the program was ended");
    for (HandedCommit* handed : waiting)
        if (Sight sight = stage.seeTaken(*handed); sight.state != RuleState::kept)
            return sight;
    return {};
}

Sight takesLate(CompanionStage& stage)
{
    if (!stage.gathered().isRecordTaken || stage.gathered().late == nullptr)
        return notSeen("no record was written after the end of the program");
    return stage.seeTaken(*stage.gathered().late);
}

Sight takesNothingAgain(CompanionStage& stage)
{
    const Gathered& gathered = stage.gathered();
    if (gathered.late == nullptr || !gathered.late->isTaken)
        return notSeen("the next start has not read the commit file of the ended process");
    for (const auto& handed : stage.commits()) {
        const bool isEarlier = handed->from < gathered.eventsBeforeRestart && handed->isTaken;
        const bool isLeft =
            handed.get() == gathered.late ||
            std::ranges::find(gathered.waiting, handed.get()) != gathered.waiting.end();
        const std::string file = peer::toUtf8(handed->file);
        if (isEarlier && !isLeft &&
            !stage.log().commitsOf(file, gathered.eventsBeforeRestart).empty())
            return broken("The next start took a commit again that was taken long before: " + file);
    }
    return {};
}

Sight removesFile(CompanionStage& stage)
{
    const std::wstring& file = stage.gathered().leftCommitFile;
    if (file.empty() || stage.instance() == nullptr)
        return notSeen("there was no commit file, or no next start");
    const bool isGone = stage.waiting().until([&] { return !peer::isFile(file); },
                                              stage.leftOfBound(stage.gathered().restartedAt));
    return keptIf(isGone, "The commit file of the ended process was still there " +
                              stage.afterBoundText() + '.');
}

// ---- Closed in order

Sight losesNothing(CompanionStage& stage)
{
    HandedCommit& handed = stage.newCommit(ownIds + 12);
    const bool isHandedIn = stage.handIn(handed);
    const std::wstring file = stage.commitFile().path();
    stage.closeCommitFile();
    const bool isClosed = stage.closeInstance();
    stage.gathered().isClosed = isClosed;
    if (!isClosed)
        return notSeen("asked to close, the window's process went on");
    if (!isHandedIn || !stage.gathered().isRecordTaken)
        return notSeen("no record could be handed in");
    const bool isTaken = !stage.log().commitsOf(peer::toUtf8(handed.file), handed.from).empty();
    return keptIf(isTaken || peer::isFile(file),
                  "A record that a host wrote just before was not taken, and the file is gone.");
}

Sight leavesNothingToFind(CompanionStage& stage)
{
    if (!stage.gathered().isClosed)
        return notSeen("the program was not closed");
    const bool isNothingLeft = stage.waiting().until(
        [] { return !peer::isInstanceRunning() && peer::findInstanceWindow() == nullptr; });
    return keptIf(
        isNothingLeft,
        "The window's process has ended, and hosts still find the semaphore or a window.");
}

} // namespace

CheckedRules endRules()
{
    return {
        {{"end.own", "Does not end by itself."}, Needs::nothing, doesNotEndByItself},
        {{"end.semaphore", "The semaphore is gone when the window's process has ended."},
         Needs::instance,
         freesSemaphore},
        {{"restart.commit", "Takes the commit with which it is started while it is not running."},
         Needs::nothing,
         takesCommitOfStart},
        {{"restart.waiting", "Takes the records that waited when it was ended by force."},
         Needs::log,
         takesWaiting},
        {{"restart.late", "Takes a record that a host wrote after its end."},
         Needs::log,
         takesLate},
        {{"restart.not-again", "Takes no record again that it took long before its end."},
         Needs::log,
         takesNothingAgain},
        {{"restart.file-removed", "Removes the commit file of its ended process."},
         Needs::instance,
         removesFile},
        {{"close.last-commit", "Loses no record that a host writes just before it is closed."},
         Needs::instance,
         losesNothing},
        {{"close.nothing-left", "Closed, it leaves neither the window nor the semaphore."},
         Needs::nothing,
         leavesNothingToFind},
    };
}

} // namespace zemlink
