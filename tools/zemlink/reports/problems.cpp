#include "tools/zemlink/reports/problems.h"

#include "peer/lines.h"
#include "peer/text.h"
#include "peer/wire_constants.h"
#include "peer/exchange_paths.h"
#include "peer/command_file.h"
#include "peer/settings_file.h"

#include <algorithm>

namespace zemlink {
namespace {

using peer::toUtf8;
using Problems = std::vector<Problem>;

std::string below(const Facts& facts, const std::wstring& path)
{
    return toUtf8(facts.folder.path + path);
}

void checkFolder(Problems& problems, const Facts& facts)
{
    const std::string folder = toUtf8(facts.folder.path);
    if (!facts.folder.otherView.empty()) {
        problems.push_back({"registry-view",
                            "The 64-bit view of the registry names " +
                                toUtf8(facts.folder.otherView) + ", but hosts use " + folder + ".",
                            "Install the Companion again, or write the value "
                            "\"installation folder\" in the 32-bit view."});
    }
    if (!facts.folderFound.isFine()) {
        problems.push_back({"folder-missing",
                            "The installation folder " + folder + ": " + facts.folderFound.text,
                            "Install the Companion, or set the registry value to its folder."});
    }
    if (!peer::isPlainAscii(facts.folder.path)) {
        problems.push_back({"folder-not-ascii",
                            "The installation folder " + folder +
                                " is not plain ASCII: requests "
                                "to open a file in it fail, and settings and log may not be found.",
                            "Install the Companion in a folder with a plain ASCII name."});
    }
}

void checkContents(Problems& problems, const Facts& facts)
{
    if (!facts.programFound.isFine()) {
        problems.push_back({"companion-missing",
                            below(facts, L"\\TORVA-ZEM.exe: ") + facts.programFound.text,
                            "Install the Companion again."});
    }
    if (!facts.tempWritable.isFine()) {
        problems.push_back(
            {"temp-not-writable",
             "No file can be created in " + below(facts, L"\\temp: ") + facts.tempWritable.text,
             "Create the folder, and give every user of a host write access to it."});
    }
    if (!facts.commitFolderFound.isFine()) {
        problems.push_back({"commit-folder-missing",
                            below(facts, L"\\commit: ") + facts.commitFolderFound.text,
                            "Create the folder; without it commits have no picture."});
    }
    if (peer::isLastSettingCut(facts.settings.value_or(""))) {
        problems.push_back({"setting-cut",
                            "The last line of " + below(facts, L"\\cfg\\settings.ini") +
                                " has no line end: its value loses its last character.",
                            "End the line."});
    }
}

void checkCommandFiles(Problems& problems, const Facts& facts)
{
    for (const CommandFile& file : facts.commandFiles) {
        const std::string process = std::to_string(file.process);
        if (!file.isProcessRunning) {
            problems.push_back({"stale-command-file",
                                toUtf8(file.path) + ": its process " + process + " has ended.",
                                "Delete the file."});
        } else if (file.bytes > peer::longestRequestBytes) {
            problems.push_back({"command-file-too-long",
                                toUtf8(file.path) + " holds " + std::to_string(file.bytes) +
                                    " bytes: the add-in has stopped reading it.",
                                "Restart the host, process " + process + "."});
        } else if (file.isLeft) {
            problems.push_back({"request-not-taken",
                                toUtf8(file.path) + " has held a request of " +
                                    std::to_string(file.bytes) +
                                    " bytes for two seconds: the add-in has stopped reading it.",
                                "Restart the host, process " + process + "."});
        }
    }
}

void checkHost(Problems& problems, const Host& host, const std::string& toolVersion)
{
    const std::string name = "The host with process " + std::to_string(host.process);
    if (!host.isAnswering) {
        problems.push_back(
            {"host-not-answering", name + " does not answer messages.",
             "Wait until it has finished its work. A save that does not return is explained in "
             "docs/messages.md; only ending the host helps then."});
    } else if (host.isBlocked) {
        problems.push_back({"host-in-dialog",
                            name +
                                (host.dialog.empty() ? " takes no input"
                                                     : " shows \"" + toUtf8(host.dialog) + '"') +
                                ": requests to open a file wait.",
                            "Close the dialog."});
    }
    if (!host.hasMessageWindow) {
        problems.push_back({"host-without-message-window",
                            name + " has no message window: it takes requests to open a file, "
                                   "but does not carry them out.",
                            "Restart the host."});
    }
    if (!host.addInVersion.empty() && host.addInVersion != toolVersion) {
        problems.push_back({"add-in-version",
                            name + " has loaded version " + host.addInVersion + " of the add-in, " +
                                toUtf8(host.addIn) + "; this is version " + toolVersion + ".",
                            "Install the same version of both, then restart the host."});
    }
}

void checkHosts(Problems& problems, const Facts& facts)
{
    for (const Host& host : facts.hosts) {
        checkHost(problems, host, facts.toolVersion);
        const bool hasFile =
            std::any_of(facts.commandFiles.begin(), facts.commandFiles.end(),
                        [&](const CommandFile& file) { return file.process == host.process; });
        if (!hasFile) {
            problems.push_back(
                {"host-without-command-file",
                 "The host with process " + std::to_string(host.process) +
                     " has no command file in " + below(facts, L"\\temp") + ".",
                 "Restart the host: it uses another folder, or has stopped listening."});
        }
    }
}

bool isOfCommandLines(const CommitFile& file)
{
    return file.process == peer::commandLineProcess;
}

Problem untakenCommits(const CommitFile& file)
{
    return {"commits-left",
            toUtf8(file.path) +
                (isOfCommandLines(file)
                     ? ": these commits came from a command line and were not taken."
                     : ": the Companion's process " + std::to_string(file.process) +
                           " ended before it took these commits."),
            "Start the Companion. If the commits remain, commit the files that `zemlink decode` "
            "shows again."};
}

// Not every Companion keeps bookmarks, and one that does writes the first with the first commit.
Problem unknownCommits(const CommitFile& file)
{
    return {"commits-unknown",
            toUtf8(file.path) +
                (isOfCommandLines(file)
                     ? ": no bookmark: it is unknown which of these commits from a command line "
                       "have been taken."
                     : ": no bookmark: it is unknown which of these commits the Companion's "
                       "process " +
                           std::to_string(file.process) + " took before it ended."),
            "Start the Companion. If the file remains, look in the Companion for the files that "
            "`zemlink decode` shows, commit those that are missing again, and delete the commit "
            "file."};
}

void checkCommits(Problems& problems, const Facts& facts)
{
    for (const CommitFile& file : facts.commitFiles) {
        const bool isLeft =
            !file.isProcessRunning && !(isOfCommandLines(file) && facts.companion.isRunning);
        if (isLeft && !file.waiting.value_or("").empty())
            problems.push_back(file.hasBookmark ? untakenCommits(file) : unknownCommits(file));
    }
}

bool isUsedByCompanion(const Facts& facts)
{
    if (!facts.port.holder)
        return facts.companion.isRunning;
    return facts.port.holder == facts.companion.process ||
           peer::isSameIgnoringCase(peer::fileNameOf(facts.port.program), peer::companionProgram);
}

std::string holderText(const Port& port)
{
    if (!port.holder)
        return "Another program";
    const std::string process = "Process " + std::to_string(*port.holder);
    return port.program.empty() ? process : process + " (" + toUtf8(port.program) + ")";
}

void checkPort(Problems& problems, const Facts& facts)
{
    const bool isUsed = facts.port.holder || facts.port.answer.isFine();
    if (isUsed && !isUsedByCompanion(facts)) {
        problems.push_back({"port-held", holderText(facts.port) + " uses port 4559.",
                            "End that program, then restart the Companion."});
    } else if (facts.companion.isRunning && !facts.port.answer.isFine()) {
        problems.push_back(
            {"port-silent",
             "The Companion is running, but port 4559 does not answer: " + facts.port.answer.text,
             "Restart the Companion, and allow connections from this computer to "
             "itself in the firewall."});
    }
}

void checkCompanion(Problems& problems, const Facts& facts)
{
    if (facts.companion.isElsewhere) {
        problems.push_back({"companion-elsewhere",
                            "The Companion is running from " + toUtf8(facts.companion.program) +
                                ", but hosts use " + toUtf8(facts.folder.path) + ".",
                            "End it and start the one in the hosts' folder, or set the registry "
                            "value to its folder, and restart the hosts."});
    }
    if (facts.companion.isRunning && !facts.companion.process) {
        problems.push_back({"companion-without-window",
                            "The Companion is running, but has no window that hosts can find.",
                            "Restart it."});
    }
}

} // namespace

std::vector<Problem> findProblems(const Facts& facts)
{
    Problems problems;
    checkFolder(problems, facts);
    checkContents(problems, facts);
    checkCommandFiles(problems, facts);
    checkHosts(problems, facts);
    checkCompanion(problems, facts);
    checkCommits(problems, facts);
    checkPort(problems, facts);
    return problems;
}

Outcome problemsOutcome(const std::vector<Problem>& problems)
{
    Report report{{"problems", Report::array()}};
    for (const Problem& each : problems) {
        report["problems"].push_back(
            Report{{"name", each.name}, {"what", each.what}, {"do", each.advice}});
    }
    return {report, problems.empty() ? done : problem};
}

} // namespace zemlink
