#include "tools/zemlink/reports/companion_checks.h"

#include "peer/exchange_paths.h"
#include "peer/text.h"
#include "tools/zemlink/reports/port_owner.h"

namespace zemlink {
namespace {

using peer::toUtf8;

bool isRunning(const Facts& facts)
{
    return facts.companion.isRunning;
}

bool isProgramKnown(const Facts& facts)
{
    return isRunning(facts) && !facts.companion.program.empty();
}

bool hasLog(const Facts& facts)
{
    return facts.hasCompanionLog;
}

void findOtherFolder(Problems& problems, const Facts& facts)
{
    if (!facts.companion.isElsewhere)
        return;
    problems.push_back({"companion-elsewhere",
                        "The Companion is running from " + toUtf8(facts.companion.program) +
                            ", but hosts use " + toUtf8(facts.folder.path) + ".",
                        "End it and start the one in the hosts' folder, or set the registry "
                        "value to its folder, and restart the hosts."});
}

void findMissingWindow(Problems& problems, const Facts& facts)
{
    if (!facts.companion.isRunning || facts.companion.process)
        return;
    problems.push_back({"companion-without-window",
                        "The Companion is running, but has no window that hosts can find: a host "
                        "passes a commit to a second start of the Companion, which refuses it.",
                        "Restart it, then save to it again in the hosts."});
}

void findRefusedCommits(Problems& problems, const Facts& facts)
{
    for (const RefusedCommit& commit : facts.refusedCommits) {
        problems.push_back({"commit-refused",
                            "The commit of " + commit.file + " was refused on " + commit.time +
                                ": the running Companion did not answer.",
                            "Save the file to the Companion again in the host."});
    }
}

bool hasCommitFiles(const Facts& facts)
{
    return !facts.commitFiles.empty();
}

bool isOfCommandLines(const CommitFile& file)
{
    return file.process == peer::commandLineProcess;
}

bool isLeft(const Facts& facts, const CommitFile& file)
{
    return !file.isProcessRunning && !(isOfCommandLines(file) && facts.companion.isRunning) &&
           !file.waiting.value_or("").empty();
}

void findLeftCommits(Problems& problems, const Facts& facts)
{
    for (const CommitFile& file : facts.commitFiles) {
        if (!isLeft(facts, file) || !file.hasBookmark)
            continue;
        problems.push_back(
            {"commits-left",
             toUtf8(file.path) +
                 (isOfCommandLines(file)
                      ? ": these commits came from a command line and were not taken."
                      : ": the Companion's process " + std::to_string(file.process) +
                            " ended before it took these commits."),
             "Start the Companion. If the commits remain, commit the files that `zemlink decode` "
             "shows again."});
    }
}

// Not every Companion keeps bookmarks, and one that does writes the first with the first commit.
void findUnknownCommits(Problems& problems, const Facts& facts)
{
    for (const CommitFile& file : facts.commitFiles) {
        if (!isLeft(facts, file) || file.hasBookmark)
            continue;
        problems.push_back(
            {"commits-unknown",
             toUtf8(file.path) +
                 (isOfCommandLines(file)
                      ? ": no bookmark: it is unknown which of these commits from a command line "
                        "have been taken."
                      : ": no bookmark: it is unknown which of these commits the Companion's "
                        "process " +
                            std::to_string(file.process) + " took before it ended."),
             "Start the Companion. If the file remains, look in the Companion for the files that "
             "`zemlink decode` shows, commit those that are missing again, and delete the commit "
             "file."});
    }
}

std::string holderText(const Port& port)
{
    if (!port.holder)
        return "Another program";
    const std::string process = "Process " + std::to_string(*port.holder);
    return port.program.empty() ? process : process + " (" + toUtf8(port.program) + ")";
}

void findStrangerOnPort(Problems& problems, const Facts& facts)
{
    const bool isUsed = facts.port.holder || facts.port.answer.isFine();
    if (!isUsed || portOwner(facts) != PortOwner::another)
        return;
    const bool isByLog = !facts.port.holder && facts.companion.isRunning;
    problems.push_back({"port-held",
                        holderText(facts.port) + " uses port 4559" +
                            (isByLog ? "; the Companion's log has that it did not get it." : "."),
                        "End that program, then restart the Companion."});
}

void findSilentPort(Problems& problems, const Facts& facts)
{
    if (!facts.companion.isRunning || facts.port.answer.isFine() ||
        (facts.port.holder && portOwner(facts) == PortOwner::another))
        return;
    problems.push_back(
        {"port-silent",
         "The Companion is running, but no program listens on port 4559 at the address to which "
         "hosts send: " +
             facts.port.answer.text,
         "Restart the Companion. If the problem remains, the Companion does not open the port, or "
         "only at another address of this computer."});
}

} // namespace

std::vector<Check> companionChecks()
{
    return {
        {"companion-elsewhere", "The Companion runs from the installation folder.", findOtherFolder,
         isProgramKnown},
        {"companion-without-window", "Hosts can find the Companion's window.", findMissingWindow,
         isRunning},
        {"commit-refused", "The Companion has logged no refused commit.", findRefusedCommits,
         hasLog},
        {"commits-left", "No commit of an ended Companion is left.", findLeftCommits,
         hasCommitFiles},
        {"commits-unknown", "For every commit it is known whether it was taken.",
         findUnknownCommits, hasCommitFiles},
        {"port-held", "No other program is known to use port 4559.", findStrangerOnPort, always},
        {"port-silent", "A program listens on port 4559 where hosts send.", findSilentPort,
         isRunning},
    };
}

} // namespace zemlink
