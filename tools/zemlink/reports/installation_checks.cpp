#include "tools/zemlink/reports/installation_checks.h"

#include "peer/command_file.h"
#include "peer/settings_file.h"
#include "peer/text.h"

namespace zemlink {
namespace {

using peer::toUtf8;

std::string below(const Facts& facts, const std::wstring& path)
{
    return toUtf8(facts.folder.path + path);
}

void findMissingFolder(Problems& problems, const Facts& facts)
{
    if (facts.folderFound.isFine())
        return;
    problems.push_back(
        {"folder-missing",
         "The installation folder " + toUtf8(facts.folder.path) + ": " + facts.folderFound.text,
         "Install the Companion, or set the registry value to its folder."});
}

void findNonAsciiFolder(Problems& problems, const Facts& facts)
{
    if (peer::isPlainAscii(facts.folder.path))
        return;
    problems.push_back({"folder-not-ascii",
                        "The installation folder " + toUtf8(facts.folder.path) +
                            " is not plain ASCII: requests "
                            "to open a file in it fail, and settings and log may not be found.",
                        "Install the Companion in a folder with a plain ASCII name."});
}

void findMissingCompanion(Problems& problems, const Facts& facts)
{
    if (facts.programFound.isFine())
        return;
    problems.push_back({"companion-missing",
                        below(facts, L"\\TORVA-ZEM.exe: ") + facts.programFound.text,
                        "Install the Companion again."});
}

void findUnwritableTemp(Problems& problems, const Facts& facts)
{
    if (facts.tempWritable.isFine())
        return;
    problems.push_back(
        {"temp-not-writable",
         "No file can be created in " + below(facts, L"\\temp: ") + facts.tempWritable.text,
         "Create the folder, and give every user of a host write access to it."});
}

void findMissingCommitFolder(Problems& problems, const Facts& facts)
{
    if (facts.commitFolderFound.isFine())
        return;
    problems.push_back({"commit-folder-missing",
                        below(facts, L"\\commit: ") + facts.commitFolderFound.text,
                        "Create the folder; without it commits have no picture."});
}

bool hasWorkingCopies(const Facts& facts)
{
    return !facts.workingCopies.empty();
}

void findNonAsciiCopies(Problems& problems, const Facts& facts)
{
    for (const std::wstring& copy : facts.workingCopies) {
        if (peer::isPlainAscii(copy))
            continue;
        problems.push_back({"copy-not-ascii",
                            "The path of the working copy " + toUtf8(copy) +
                                " is not plain ASCII: no request can open it.",
                            "Save it under another name, and commit it again."});
    }
}

std::string openPathText(const OpenPath& open)
{
    std::string accounts;
    for (const std::wstring& account : open.accounts)
        accounts += (accounts.empty() ? "" : ", ") + toUtf8(account);
    return toUtf8(open.path) + " (" + accounts + ")";
}

void findOpenPaths(Problems& problems, const Facts& facts)
{
    std::string paths;
    for (const OpenPath& open : facts.openPaths)
        paths += (paths.empty() ? "" : ", ") + openPathText(open);
    if (paths.empty())
        return;
    problems.push_back({"writable-by-others",
                        "Other accounts may write to " + paths +
                            ": they can open files in the host and overwrite them, or replace the "
                            "Companion or the add-in.",
                        "Set the permissions as the manual lists them under \"Security\"."});
}

bool hasSetup(const Facts& facts)
{
    return facts.setup.has_value();
}

void findMissingHostFolder(Problems& problems, const Facts& facts)
{
    if (facts.setup->hostFolderFound.isFine())
        return;
    problems.push_back({"host-folder-missing",
                        "Setup installed the add-in in the host's folder " +
                            toUtf8(facts.setup->hostFolder) + ": " +
                            facts.setup->hostFolderFound.text,
                        "Run setup again and choose the folder of the host."});
}

void findMissingAddIn(Problems& problems, const Facts& facts)
{
    if (!facts.setup->hostFolderFound.isFine() || facts.setup->addInFound.isFine())
        return;
    problems.push_back({"add-in-not-installed",
                        "The add-in that setup installed, " + toUtf8(facts.setup->addIn()) + ": " +
                            facts.setup->addInFound.text,
                        "Run setup again."});
}

bool hasSettings(const Facts& facts)
{
    return facts.settings.has_value();
}

void findCutSetting(Problems& problems, const Facts& facts)
{
    if (!peer::isLastSettingCut(facts.settings.value_or("")))
        return;
    problems.push_back({"setting-cut",
                        "The last line of " + below(facts, L"\\cfg\\settings.ini") +
                            " has no line end: its value loses its last character.",
                        "End the line."});
}

} // namespace

std::vector<Check> installationChecks()
{
    return {
        {"folder-missing", "The installation folder exists.", findMissingFolder, always},
        {"folder-not-ascii", "The installation folder's name is plain ASCII.", findNonAsciiFolder,
         always},
        {"copy-not-ascii", "Every working copy's path is plain ASCII.", findNonAsciiCopies,
         hasWorkingCopies},
        {"writable-by-others", "No other account may write to the installation or the add-in.",
         findOpenPaths, always},
        {"companion-missing", "The Companion is installed in the folder.", findMissingCompanion,
         always},
        {"temp-not-writable", "Files can be created in temp.", findUnwritableTemp, always},
        {"commit-folder-missing", "The folder commit exists.", findMissingCommitFolder, always},
        {"setting-cut", "Every line of the settings has an end.", findCutSetting, hasSettings},
        {"host-folder-missing", "The host's folder of the installed add-in exists.",
         findMissingHostFolder, hasSetup},
        {"add-in-not-installed", "The installed add-in is in the host's folder.", findMissingAddIn,
         hasSetup},
    };
}

} // namespace zemlink
