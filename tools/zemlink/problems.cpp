#include "tools/zemlink/problems.h"

#include "peer/ascii_case.h"
#include "peer/exchange_paths.h"
#include "peer/command_file.h"
#include "peer/text.h"
#include "peer/settings_file.h"

#include <algorithm>

namespace zemlink {
namespace {

using companion::toUtf8;
using Troubles = std::vector<Trouble>;

constexpr wchar_t companionProgram[] = L"TORVA-ZEM.exe";

std::string below(const Facts& facts, const std::wstring& path)
{
    return toUtf8(facts.folder.path + path);
}

void judgeFolder(Troubles& troubles, const Facts& facts)
{
    const std::string folder = toUtf8(facts.folder.path);
    if (!facts.folder.elsewhere.empty()) {
        troubles.push_back({"registry-view",
                            "The 64-bit view of the registry names " +
                                toUtf8(facts.folder.elsewhere) + ", but hosts work with " + folder +
                                ".",
                            "Install the Companion again, or write the value "
                            "\"installation folder\" in the 32-bit view."});
    }
    if (!facts.folderThere.isFine()) {
        troubles.push_back({"folder-missing",
                            "The installation folder " + folder + ": " + facts.folderThere.text,
                            "Install the Companion, or have the registry name its folder."});
    }
    if (!companion::isPlainAscii(facts.folder.path)) {
        troubles.push_back({"folder-not-ascii",
                            "The installation folder " + folder +
                                " is not plain ASCII: requests "
                                "to open a file in it fail, and settings and log may not be found.",
                            "Install the Companion in a folder with a plain name."});
    }
}

void judgeContents(Troubles& troubles, const Facts& facts)
{
    if (!facts.programThere.isFine()) {
        troubles.push_back({"companion-missing",
                            below(facts, L"\\TORVA-ZEM.exe: ") + facts.programThere.text,
                            "Install the Companion again."});
    }
    if (!facts.tempWritable.isFine()) {
        troubles.push_back(
            {"temp-not-writable",
             "No file can be made in " + below(facts, L"\\temp: ") + facts.tempWritable.text,
             "Make the folder, and let every user of hosts write in it."});
    }
    if (!facts.commitThere.isFine()) {
        troubles.push_back({"commit-folder-missing",
                            below(facts, L"\\commit: ") + facts.commitThere.text,
                            "Make the folder; without it commits have no picture."});
    }
    if (isLastSettingCut(facts.settings.value_or(""))) {
        troubles.push_back({"setting-cut",
                            "The last line of " + below(facts, L"\\cfg\\settings.ini") +
                                " has no line end: its value loses its last character.",
                            "End the line."});
    }
}

void judgeCommandFiles(Troubles& troubles, const Facts& facts)
{
    for (const CommandFile& file : facts.commandFiles) {
        const std::string process = std::to_string(file.process);
        if (!file.isProcessThere) {
            troubles.push_back({"stale-command-file",
                                toUtf8(file.path) + ": its process " + process + " is gone.",
                                "Delete the file."});
        } else if (file.bytes > companion::longestRequestBytes) {
            troubles.push_back({"command-file-too-long",
                                toUtf8(file.path) + " holds " + std::to_string(file.bytes) +
                                    " bytes: the add-in has stopped reading it.",
                                "Restart the host, process " + process + "."});
        }
    }
}

void judgeHosts(Troubles& troubles, const Facts& facts)
{
    for (const companion::Host& host : facts.hosts) {
        const bool hasFile =
            std::any_of(facts.commandFiles.begin(), facts.commandFiles.end(),
                        [&](const CommandFile& file) { return file.process == host.process; });
        if (!hasFile) {
            troubles.push_back({"host-without-command-file",
                                "The host with process " + std::to_string(host.process) +
                                    " has no command file in " + below(facts, L"\\temp") + ".",
                                "Restart the host: it works with another folder, or has stopped "
                                "listening."});
        }
    }
}

void judgeCommits(Troubles& troubles, const Facts& facts)
{
    for (const CommitFile& file : facts.commitFiles) {
        const bool isCommandLines = file.process == companion::commandLineProcess;
        const bool isLeft = !file.isProcessThere && !(isCommandLines && facts.companion.isRunning);
        if (isLeft && !file.waiting.value_or("").empty()) {
            const std::string process = std::to_string(file.process);
            troubles.push_back(
                {"commits-left",
                 toUtf8(file.path) +
                     (isCommandLines
                          ? ": these commits came by a command line and nobody took them."
                          : ": the Companion's process " + process +
                                " ended before it took these commits."),
                 "Start the Companion. Should they stay, commit the files that "
                 "`zemlink decode` shows once more."});
        }
    }
}

bool isHeldByCompanion(const Facts& facts)
{
    if (!facts.port.holder)
        return facts.companion.isRunning;
    return facts.port.holder == facts.companion.process ||
           companion::isSameIgnoringCase(companion::fileNameOf(facts.port.program),
                                         companionProgram);
}

std::string holderText(const Port& port)
{
    if (!port.holder)
        return "Another program";
    const std::string process = "Process " + std::to_string(*port.holder);
    return port.program.empty() ? process : process + " (" + toUtf8(port.program) + ")";
}

void judgePort(Troubles& troubles, const Facts& facts)
{
    const bool isHeld = facts.port.holder || facts.port.answer.isFine();
    if (isHeld && !isHeldByCompanion(facts)) {
        troubles.push_back({"port-held", holderText(facts.port) + " holds port 4559.",
                            "End that program, then start the Companion again."});
    } else if (facts.companion.isRunning && !facts.port.answer.isFine()) {
        troubles.push_back(
            {"port-silent",
             "The Companion runs, but port 4559 does not answer: " + facts.port.answer.text,
             "Start the Companion again, and have the firewall let this computer "
             "reach itself."});
    }
}

void judgeCompanion(Troubles& troubles, const Facts& facts)
{
    if (facts.companion.isRunning && !facts.companion.process) {
        troubles.push_back({"companion-without-window",
                            "The Companion runs, but has no window that hosts can find.",
                            "End it and start it again."});
    }
}

} // namespace

std::vector<Trouble> findTroubles(const Facts& facts)
{
    Troubles troubles;
    judgeFolder(troubles, facts);
    judgeContents(troubles, facts);
    judgeCommandFiles(troubles, facts);
    judgeHosts(troubles, facts);
    judgeCompanion(troubles, facts);
    judgeCommits(troubles, facts);
    judgePort(troubles, facts);
    return troubles;
}

Outcome troublesOutcome(const std::vector<Trouble>& troubles)
{
    Report report{{"troubles", Report::array()}};
    for (const Trouble& each : troubles) {
        report["troubles"].push_back(
            Report{{"name", each.name}, {"what", each.what}, {"do", each.advice}});
    }
    return {report, troubles.empty() ? done : trouble};
}

} // namespace zemlink
