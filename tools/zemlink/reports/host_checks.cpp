#include "tools/zemlink/reports/host_checks.h"

#include "peer/lines.h"
#include "peer/text.h"
#include "peer/wire_constants.h"

#include <algorithm>

namespace zemlink {
namespace {

using peer::toUtf8;

bool hasHosts(const Facts& facts)
{
    return !facts.hosts.empty();
}

bool hasExpectations(const Facts& facts)
{
    return facts.hosts.size() > 1 || (hasHosts(facts) && facts.setup);
}

bool hasHostPrograms(const Facts& facts)
{
    return hasHosts(facts) || !facts.hostsWithoutAddIn.empty();
}

std::string nameOf(std::uint32_t process)
{
    return "The host with process " + std::to_string(process);
}

std::string programText(const std::wstring& program)
{
    return program.empty() ? "" : " (" + toUtf8(program) + ")";
}

void findHostsWithoutAddIn(Problems& problems, const Facts& facts)
{
    for (const HostWithoutAddIn& host : facts.hostsWithoutAddIn) {
        const std::string name = nameOf(host.process) + programText(host.program);
        if (!host.areModulesKnown)
            problems.push_back({"add-in-missing",
                                name + " shows no add-in; zemlink may not look into the process.",
                                "Run the host and zemlink as the same user, without administrator "
                                "rights."});
        else if (host.addIn.empty())
            problems.push_back({"add-in-missing", name + " has not loaded the add-in.",
                                "Install the add-in for this program, then restart it."});
        else
            problems.push_back(
                {"add-in-missing",
                 name + " has loaded the add-in " + toUtf8(host.addIn) + ", but has not opened it.",
                 "Wait until the host has started, else restart it."});
    }
}

bool isOtherPath(const std::wstring& path, const std::wstring& expected)
{
    return !path.empty() && !expected.empty() && !peer::isSameIgnoringCase(path, expected);
}

// What the host should have loaded instead; empty when that is unknown. One program loads the
// add-in from one place only, but another program may have its own copy.
std::wstring expectedAddIn(const Facts& facts, const Host& host)
{
    const bool isInstalled =
        facts.setup &&
        peer::isSameIgnoringCase(host.program, facts.setup->hostFolder + L'\\' + peer::hostProgram);
    if (isInstalled)
        return facts.setup->addIn();
    const auto first = std::ranges::find_if(facts.hosts, [&](const Host& each) {
        return !each.addIn.empty() && peer::isSameIgnoringCase(each.program, host.program);
    });
    return first == facts.hosts.end() ? std::wstring() : first->addIn;
}

void findOtherAddIns(Problems& problems, const Facts& facts)
{
    for (const Host& host : facts.hosts) {
        const std::wstring expected = expectedAddIn(facts, host);
        if (!isOtherPath(host.addIn, expected))
            continue;
        problems.push_back({"add-in-elsewhere",
                            nameOf(host.process) + " has loaded " + toUtf8(host.addIn) + ", not " +
                                toUtf8(expected) + ".",
                            "Remove the library that does not belong to the installation, then "
                            "restart the host."});
    }
}

void findOtherVersions(Problems& problems, const Facts& facts)
{
    for (const Host& host : facts.hosts) {
        if (host.addInVersion.empty() || host.addInVersion == facts.toolVersion)
            continue;
        problems.push_back({"add-in-version",
                            nameOf(host.process) + " has loaded version " + host.addInVersion +
                                " of the add-in, " + toUtf8(host.addIn) + "; this is version " +
                                facts.toolVersion + ".",
                            "Install the same version of both, then restart the host."});
    }
}

void findSilentHosts(Problems& problems, const Facts& facts)
{
    for (const Host& host : facts.hosts) {
        if (host.isAnswering)
            continue;
        problems.push_back(
            {"host-not-answering",
             nameOf(host.process) +
                 " does not answer messages: it is at work, or it was told to save a document that "
                 "is not the Companion's after it had reported a save of its own, and does not "
                 "return from that.",
             "Wait until it has finished its work. If it was such a save, only ending the host "
             "helps: see \"Find the cause\" in the manual."});
    }
}

void findDialogs(Problems& problems, const Facts& facts)
{
    for (const Host& host : facts.hosts) {
        if (!host.isAnswering || !host.isBlocked)
            continue;
        const std::string state =
            host.dialog.empty() ? " takes no input" : " shows \"" + toUtf8(host.dialog) + '"';
        problems.push_back({"host-in-dialog",
                            nameOf(host.process) + state + ": requests to open a file wait.",
                            "Close the dialog."});
    }
}

void findHostsWithoutMessageWindow(Problems& problems, const Facts& facts)
{
    for (const Host& host : facts.hosts) {
        if (host.hasMessageWindow)
            continue;
        problems.push_back({"host-without-message-window",
                            nameOf(host.process) +
                                " has no message window: it takes requests to open a file, "
                                "but does not carry them out.",
                            "Restart the host."});
    }
}

void findHostsWithoutCommandFile(Problems& problems, const Facts& facts)
{
    for (const Host& host : facts.hosts) {
        if (std::ranges::find(facts.commandFiles, host.process, &CommandFile::process) !=
            facts.commandFiles.end())
            continue;
        problems.push_back({"host-without-command-file",
                            nameOf(host.process) + " has no command file in " +
                                toUtf8(facts.folder.path + L"\\temp") + ".",
                            "Restart the host: it uses another folder, or has stopped listening."});
    }
}

} // namespace

std::vector<Check> hostChecks()
{
    return {
        {"add-in-missing", "Every running host has opened the add-in.", findHostsWithoutAddIn,
         hasHostPrograms},
        {"add-in-elsewhere", "Every host has loaded the add-in from its place.", findOtherAddIns,
         hasExpectations},
        {"add-in-version", "Every host has the add-in of zemlink's version.", findOtherVersions,
         hasHosts},
        {"host-not-answering", "Every host answers messages.", findSilentHosts, hasHosts},
        {"host-in-dialog", "No answering host shows a dialog.", findDialogs, hasHosts},
        {"host-without-message-window", "Every host has a message window.",
         findHostsWithoutMessageWindow, hasHosts},
        {"host-without-command-file", "Every host has a command file.", findHostsWithoutCommandFile,
         hasHosts},
    };
}

} // namespace zemlink
