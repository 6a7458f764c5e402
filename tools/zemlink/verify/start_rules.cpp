// What hosts see of a Companion that has just been started, and what its command lines do.
#include "peer/files.h"
#include "peer/running_programs.h"
#include "peer/settings_file.h"
#include "peer/text.h"
#include "tools/zemlink/verify/companion_rule_groups.h"

namespace zemlink {
namespace {

std::wstring inQuotes(const std::wstring& text)
{
    return L'"' + text + L'"';
}

// ---- Start

std::string startupProblem(CompanionStage& stage)
{
    const HANDLE plain = stage.gathered().firstStarts.plain;
    if (!stage.isProgramRunning())
        return "Started without arguments, " + endText(plain) + '.';
    return "There was none " + stage.boundText() + '.';
}

Sight holdsSemaphore(CompanionStage& stage)
{
    FirstStarts& starts = stage.gathered().firstStarts;
    starts.commit = &stage.newCommit(peer::noZemId);
    starts.plain = stage.start(L"");
    starts.withCommit = stage.start(L"--commit " + inQuotes(starts.commit->file));
    stage.waitForInstance();
    starts.commit->since = monotonicMs();
    if (stage.instance() != nullptr)
        stage.commitFile(); // as a host that opens it long before it writes
    return keptIf(peer::isInstanceRunning(), startupProblem(stage));
}

Sight hasWindow(CompanionStage& stage)
{
    return keptIf(stage.instance() != nullptr, startupProblem(stage));
}

Sight startsOnce(CompanionStage& stage)
{
    const FirstStarts& starts = stage.gathered().firstStarts;
    const bool isOneLeft = stage.waiting().until(
        [&] { return hasEnded(starts.plain) || hasEnded(starts.withCommit); });
    return keptIf(isOneLeft, "Both processes were still running " + stage.afterBoundText() + '.');
}

Sight takesFirstCommit(CompanionStage& stage)
{
    return stage.seeTaken(*stage.gathered().firstStarts.commit);
}

Sight endsSettingLines(CompanionStage& stage)
{
    const auto settings = peer::readFile(stage.folder() + peer::settingsFile);
    if (!settings)
        return notSeen("there is no file cfg\\settings.ini");
    return keptIf(!peer::isLastSettingCut(*settings),
                  "Its last line has no line feed: hosts cut the last character of its value.");
}

// ---- Command lines

std::wstring checkOutFile()
{
    wchar_t folder[MAX_PATH + 1] = L"";
    GetTempPathW(MAX_PATH + 1, folder);
    return std::wstring(folder) + L"\\TORVA ZEM-" + std::to_wstring(GetCurrentProcessId() % 65536) +
           L".tmp";
}

// All at the same time, as several hosts can.
void startSecondStarts(CompanionStage& stage)
{
    SecondStarts& starts = stage.gathered().secondStarts;
    const Instance* const instance = stage.instance();
    starts.instance = instance != nullptr ? instance->process : 0;
    starts.counts = peer::readInstanceCounts();
    starts.commit = &stage.newCommit(peer::noZemId);
    starts.commitWithoutId = &stage.newCommit(peer::noZemId);
    const std::wstring answer = checkOutFile();
    stage.removeLater(answer);
    const auto parent =
        static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(stage.host().window()));
    const std::array<std::wstring, secondStartCount> arguments = {
        L"",
        L"--checkout " + inQuotes(answer),
        L"--commit " + inQuotes(starts.commit->file),
        L"--commit " + inQuotes(starts.commitWithoutId->file) + L" --id 4294967295",
        L"--about --parentwindow " + std::to_wstring(parent),
        L"--zemlink-verify \"an unknown word\" 1"};
    for (size_t i = 0; i < secondStartCount; ++i)
        starts.processes[i] = stage.start(arguments[i]);
}

template <SecondStart start>
Sight endsByItself(CompanionStage& stage)
{
    if (stage.gathered().secondStarts.commit == nullptr)
        startSecondStarts(stage);
    SecondStarts& starts = stage.gathered().secondStarts;
    const HANDLE process = starts.processes[static_cast<size_t>(start)];
    const bool isEnded = stage.waiting().until([&] { return hasEnded(process); });
    if (!isEnded) {
        TerminateProcess(process, endedByZemlink);
        ++starts.terminated;
    }
    return keptIf(isEnded, "It was still running " + stage.afterBoundText() + '.');
}

Sight takesCommandLineCommit(CompanionStage& stage)
{
    return stage.seeTaken(*stage.gathered().secondStarts.commit);
}

Sight takesCommitWithoutId(CompanionStage& stage)
{
    return stage.seeTaken(*stage.gathered().secondStarts.commitWithoutId);
}

std::string changedCountsText(const SecondStarts& starts, const peer::SemaphoreCounts& after)
{
    const auto textOf = [](const peer::SemaphoreCounts& counts) {
        return std::to_string(counts.current) + " of " + std::to_string(counts.maximum);
    };
    std::string text = "The count was " + textOf(*starts.counts) + " before " +
                       std::to_string(secondStartCount) + " second starts and " + textOf(after) +
                       " after them";
    if (starts.terminated > 0)
        text += "; zemlink had to end " + std::to_string(starts.terminated) + " of them";
    return text + '.';
}

// A start that had to be ended counts too: users end what does not end by itself.
Sight keepsCounts(CompanionStage& stage)
{
    const SecondStarts& starts = stage.gathered().secondStarts;
    const Instance* const instance = stage.instance();
    if (instance == nullptr || instance->process != starts.instance)
        return notSeen("the instance before the second starts has ended, and its counts with it");
    // The instance may take what a second start has released to wake it.
    std::optional<peer::SemaphoreCounts> after;
    stage.waiting().until([&] {
        after = peer::readInstanceCounts();
        return !starts.counts || !after || after == starts.counts;
    });
    if (!starts.counts || !after)
        return notSeen("the counts of the semaphore cannot be read");
    return keptIf(after == starts.counts, changedCountsText(starts, *after));
}

} // namespace

CheckedRules startRules()
{
    return {
        {{"start.semaphore", "Holds the semaphore by which hosts find out that it runs."},
         Needs::nothing,
         holdsSemaphore},
        {{"start.window", "Has a top-level window with the instance property, not 0."},
         Needs::nothing,
         hasWindow},
        {{"start.once", "Runs once when it is started twice at the same time."},
         Needs::instance,
         startsOnce},
        {{"start.commit", "Takes the commit of the second of two starts at the same time."},
         Needs::log,
         takesFirstCommit},
        {{"start.settings", "Ends the last line of its settings file with a line feed."},
         Needs::nothing,
         endsSettingLines},
    };
}

CheckedRules commandLineRules()
{
    return {
        {{"commands.none", "A second start without arguments ends by itself."},
         Needs::instance,
         endsByItself<SecondStart::plain>},
        {{"commands.check-out", "A second start with --checkout \"FILE\" ends by itself."},
         Needs::instance,
         endsByItself<SecondStart::checkOut>},
        {{"commands.commit", "A second start with --commit \"FILE\" ends by itself."},
         Needs::instance,
         endsByItself<SecondStart::commit>},
        {{"commands.commit-taken", "Takes the commit of a second start with --commit \"FILE\"."},
         Needs::log,
         takesCommandLineCommit},
        {{"commands.no-id",
          "A second start with --commit \"FILE\" --id 4294967295 ends by itself."},
         Needs::instance,
         endsByItself<SecondStart::commitWithoutId>},
        {{"commands.no-id-taken", "Takes the commit of a second start with --id 4294967295."},
         Needs::log,
         takesCommitWithoutId},
        {{"commands.about", "A second start with --about --parentwindow N ends by itself."},
         Needs::instance,
         endsByItself<SecondStart::about>},
        {{"commands.unknown", "A second start with unknown arguments ends by itself."},
         Needs::instance,
         endsByItself<SecondStart::unknown>},
        {{"commands.counts", "Second starts leave the counts of the semaphore as they were."},
         Needs::instance,
         keepsCounts},
    };
}

} // namespace zemlink
