// The setup program and its uninstaller, run silently.
#include "packaging/setup_fixture.h"
#include "peer/wire_constants.h"
#include "support/host_program.h"
#include "zemlink/tool_run.h"

#include <algorithm>
#include <filesystem>

using namespace testing_support;

namespace {

State registry()
{
    State state = registryBelow(HKEY_LOCAL_MACHINE, L"SOFTWARE");
    state.merge(registryBelow(HKEY_CURRENT_USER, L"Software"));
    return state;
}

// A number in the entry; 0 if there is none.
DWORD entryNumber(const wchar_t* name)
{
    DWORD value = 0;
    DWORD size = sizeof value;
    RegGetValueW(HKEY_LOCAL_MACHINE, entryKey, name, RRF_RT_REG_DWORD, nullptr, &value, &size);
    return value;
}

bool isSetupRunning()
{
    const HANDLE running =
        OpenMutexW(SYNCHRONIZE, FALSE, L"Global\\TORVA ZEM add-in for Mastercam setup");
    if (running != nullptr)
        CloseHandle(running);
    return running != nullptr;
}

} // namespace

TEST_F(Setup, addsAndRemovesItsFilesAndEntry)
{
    const State filesBefore = filesBelow(L"C:", site.temporaryFolder);
    const State registryBefore = registry();
    ASSERT_EQ(site.setUp(), done);
    State added = onlyIn(filesBelow(L"C:", site.temporaryFolder), filesBefore);
    State expected = onlyIn(filesBelow(site.addInFolder), State());
    for (const wchar_t* folder :
         {L"TORVA AS\\", L"TORVA AS\\ZEM add-in\\", L"Mastercam 1\\chooks\\"})
        expected.insert(installation.path(folder));
    expected.merge(filesBelow(site.hostFolder + L"\\chooks"));
    EXPECT_EQ(added, expected) << text(added);
    const State registryAfter = registry();
    EXPECT_EQ(onlyIn(registryAfter, registryBefore), entry());
    EXPECT_EQ(onlyIn(registryBefore, registryAfter), State());
    ASSERT_TRUE(site.uninstall());
    const State filesInTheEnd = filesBelow(L"C:", site.temporaryFolder);
    EXPECT_EQ(onlyIn(filesInTheEnd, filesBefore), State());
    EXPECT_EQ(onlyIn(filesBefore, filesInTheEnd), State());
    EXPECT_EQ(registry(), registryBefore);
}

TEST_F(Setup, putsEveryPackedFileInPlace)
{
    ASSERT_EQ(site.setUp(), done);
    EXPECT_EQ(pathsBelow(site.addInFolder), installedPaths());
    for (const std::wstring& path : pathsBelow(packedFolder()))
        EXPECT_EQ(
            readBytes(path == L"torvapdm.dll" ? site.library() : site.addInFolder + L'\\' + path),
            packed(path))
            << toUtf8(path);
    EXPECT_EQ(pathsBelow(site.hostFolder + L"\\chooks"), std::set<std::wstring>{L"torvapdm.dll"});
}

TEST_F(Setup, registersAsAnInstalledProgram)
{
    const std::wstring dayBefore = localTime(L"yyyyMMdd", L"");
    ASSERT_EQ(site.setUp(), done);
    EXPECT_EQ(entryText(L"DisplayName"), L"TORVA ZEM add-in for the stand-in host");
    EXPECT_EQ(entryText(L"DisplayVersion"), L"" VERSION_TEXT);
    EXPECT_EQ(entryText(L"Publisher"), L"TORVA AS");
    EXPECT_EQ(entryText(L"InstallLocation"), site.addInFolder);
    EXPECT_EQ(entryText(L"HostFolder"), site.hostFolder);
    const std::wstring uninstaller = quoted(site.addInFolder + L"\\uninstall.exe");
    EXPECT_EQ(entryText(L"UninstallString"), uninstaller);
    EXPECT_EQ(entryText(L"QuietUninstallString"), uninstaller + L" /S");
    EXPECT_EQ(entryText(L"DisplayIcon"), site.addInFolder + L"\\uninstall.exe,0");
    EXPECT_TRUE(std::filesystem::exists(entryText(L"Readme")));
    const std::wstring date = entryText(L"InstallDate");
    EXPECT_TRUE(dayBefore <= date && date <= localTime(L"yyyyMMdd", L"")) << toUtf8(date);
    for (const wchar_t* name : {L"URLInfoAbout", L"HelpLink"})
        EXPECT_EQ(entryText(name) + L"/namespace/torvapdm/instance", peer::instanceProperty);
    EXPECT_EQ(std::wstring(L"" VERSION_TEXT)
                  .find(std::to_wstring(entryNumber(L"VersionMajor")) + L'.' +
                        std::to_wstring(entryNumber(L"VersionMinor")) + L'.'),
              0u);
    for (const wchar_t* name : {L"NoModify", L"NoRepair", L"EstimatedSize"})
        EXPECT_GE(entryNumber(name), 1u) << toUtf8(name);
}

TEST_F(Setup, installsWhatRuns)
{
    ASSERT_EQ(site.setUp(), done);
    const HostProgram host(installation, "call TestFunction\nquit\n", L"host",
                           site.hostFolder + L"\\Mastercam.exe", site.library());
    EXPECT_EQ(host.process().waitForExit(), 0u);
    for (const wchar_t* line : {L"ui m_version(2100) -> 2100", L"ui m_open(0) -> 0",
                                L"ui TestFunction() -> 1", L"ui m_close(0) -> 0"})
        EXPECT_EQ(count(host.trace(), line), 1u) << toUtf8(line);
    const ToolRun tool(installation, L"--version", L"tool", site.addInFolder + L"\\zemlink.exe");
    EXPECT_EQ(tool.waitForExit(), 0u);
    EXPECT_EQ(tool.output(), "zemlink " VERSION_TEXT "\n");
}

TEST_F(Setup, refusesAFolderWithoutTheHost)
{
    EXPECT_EQ(site.setUp(setupProgram(), installation.root()), noHost);
    EXPECT_EQ(site.setUp(setupProgram(), installation.path(L"nowhere")), noHost);
    expectNothingInstalled();
}

TEST_F(Setup, refusesToGuessTheHostsFolder)
{
    EXPECT_EQ(site.setUp(setupProgram(), L""), noHost);
    EXPECT_EQ(Process(quoted(setupProgram()) + L" /S /D=" + site.addInFolder).waitForExit(),
              noHost);
    expectNothingInstalled();
}

TEST_F(Setup, rollsBackWhenItCannotWrite)
{
    std::filesystem::create_directories(site.addInFolder);
    writeBytes(site.addInFolder + L"\\docs", "a file where the folder should be");
    const State before = files();
    EXPECT_EQ(site.setUp(), cannotWrite);
    EXPECT_EQ(files(), before);
    EXPECT_EQ(entry(), State());
}

TEST_F(Setup, refusesAnImpossibleFolder)
{
    const std::wstring arguments = L" /S /HOST=" + quoted(site.hostFolder) + L" /D=";
    EXPECT_EQ(Process(quoted(setupProgram()) + arguments + L"Q:\\ZEM add-in").waitForExit(),
              cannotWrite);
    writeBytes(installation.path(L"file"), "");
    const std::wstring belowFile = installation.path(L"file\\ZEM add-in");
    EXPECT_EQ(Process(quoted(setupProgram()) + arguments + belowFile).waitForExit(), cannotWrite);
    expectNothingInstalled();
}

TEST_F(Setup, keepsAnEarlierVersionItCannotReplace)
{
    ASSERT_EQ(site.setUp(earlierSetupProgram(), site.hostFolder), done);
    // Blocks a new file, which fails before any old file is removed.
    std::filesystem::create_directory(site.addInFolder + L"\\zemlink.exe.new");
    const State before = files();
    const State entryBefore = entry();
    EXPECT_EQ(site.setUp(), cannotWrite);
    EXPECT_EQ(files(), before);
    EXPECT_EQ(entry(), entryBefore);
}

TEST_F(Setup, doesNotRunWhenItIsDamaged)
{
    const std::wstring damaged = installation.path(L"damaged.exe");
    std::string bytes = readBytes(setupProgram()).value_or("");
    ASSERT_FALSE(bytes.empty());
    char& changed = bytes[bytes.size() / 2];
    changed = changed == 'x' ? 'y' : 'x';
    writeBytes(damaged, bytes);
    EXPECT_EQ(site.setUp(damaged, site.hostFolder), failed);
    EXPECT_EQ(setupLog(), Lines());
    expectNothingInstalled();
    // Nor does setup take such an uninstaller for a version that it has removed.
    ASSERT_EQ(site.setUp(earlierSetupProgram(), site.hostFolder), done);
    const std::wstring uninstaller = site.addInFolder + L"\\uninstall.exe";
    bytes = readBytes(uninstaller).value_or("");
    ASSERT_FALSE(bytes.empty());
    bytes.back() = bytes.back() == 'x' ? 'y' : 'x';
    writeBytes(uninstaller, bytes);
    EXPECT_EQ(site.setUp(), cannotWrite);
    EXPECT_EQ(entryText(L"DisplayVersion"), L"" EARLIER_VERSION_TEXT);
}

TEST_F(Setup, changesNothingWhileAHostRuns)
{
    ASSERT_EQ(site.setUp(earlierSetupProgram(), site.hostFolder), done);
    const HostProgram host(installation, "", L"host", site.hostFolder + L"\\Mastercam.exe",
                           site.library());
    ASSERT_TRUE(host.waitForTrace(L"m_open(0) -> 0"));
    const State before = filesBelow(site.addInFolder);
    const State libraryBefore = filesBelow(site.hostFolder);
    const State entryBefore = entry();
    EXPECT_EQ(site.setUp(), inUse);
    EXPECT_EQ(site.uninstallInPlace(), inUse);
    EXPECT_EQ(filesBelow(site.addInFolder), before);
    EXPECT_EQ(filesBelow(site.hostFolder), libraryBefore);
    EXPECT_EQ(entry(), entryBefore);
    const std::wstring reason = L"Error: " + site.library() +
                                L" is in use by Mastercam.exe (process " +
                                std::to_wstring(host.process().id()) + L").";
    EXPECT_EQ(count(setupLog(), reason), 1u);
    EXPECT_EQ(count(uninstallLog(), reason), 1u);
}

TEST_F(Setup, staysWithARunningEarlierHost)
{
    ASSERT_EQ(site.setUp(earlierSetupProgram(), site.hostFolder), done);
    const HostProgram host(installation, "", L"host", site.hostFolder + L"\\Mastercam.exe",
                           site.library());
    ASSERT_TRUE(host.waitForTrace(L"m_open(0) -> 0"));
    const std::wstring otherHost = installation.path(L"Mastercam 2");
    layOutHost(otherHost);
    EXPECT_EQ(site.setUp(setupProgram(), otherHost), inUse);
    EXPECT_FALSE(std::filesystem::exists(otherHost + L"\\chooks"));
    EXPECT_EQ(entryText(L"HostFolder"), site.hostFolder);
}

TEST_F(Setup, changesNothingWhileADocumentIsOpen)
{
    ASSERT_EQ(site.setUp(earlierSetupProgram(), site.hostFolder), done);
    // A document that the new version does not have: only the earlier uninstaller knows it.
    const HANDLE reader =
        CreateFileW((site.addInFolder + L"\\docs\\part-file.md").c_str(), GENERIC_READ,
                    FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(reader, INVALID_HANDLE_VALUE);
    const State before = files();
    const State entryBefore = entry();
    EXPECT_EQ(site.setUp(), inUse);
    EXPECT_EQ(site.uninstallInPlace(), inUse);
    EXPECT_EQ(files(), before);
    EXPECT_EQ(entry(), entryBefore);
    // From the earlier uninstaller, and from setup itself.
    EXPECT_EQ(count(setupLog(), L"Error: " + site.addInFolder + L"\\docs\\part-file.md is in use"),
              2u);
    CloseHandle(reader);
    EXPECT_EQ(site.setUp(), done);
}

TEST_F(Setup, replacesAnEarlierVersion)
{
    ASSERT_EQ(site.setUp(earlierSetupProgram(), site.hostFolder), done);
    EXPECT_EQ(entryText(L"DisplayVersion"), L"" EARLIER_VERSION_TEXT);
    EXPECT_TRUE(installed(L"docs\\part-file.md").has_value());
    EXPECT_TRUE(installed(L"bench\\growth.gnuplot").has_value());
    writeBytes(site.library(), "the earlier library");
    // The host's folder is remembered.
    ASSERT_EQ(Process(quoted(setupProgram()) + L" /S").waitForExit(), done);
    EXPECT_EQ(entryText(L"DisplayVersion"), L"" VERSION_TEXT);
    EXPECT_EQ(pathsBelow(site.addInFolder), installedPaths());
    EXPECT_EQ(readBytes(site.library()), packed(L"torvapdm.dll"));
    ASSERT_TRUE(site.uninstall());
    expectNothingInstalled();
}

TEST_F(Setup, replacesTheLastRelease)
{
    ASSERT_EQ(site.setUp(releasedSetupProgram(), site.hostFolder), done);
    EXPECT_TRUE(installed(L"zemlink.exe").has_value());
    ASSERT_EQ(Process(quoted(setupProgram()) + L" /S").waitForExit(), done);
    EXPECT_EQ(pathsBelow(site.addInFolder), installedPaths());
    EXPECT_EQ(readBytes(site.library()), packed(L"torvapdm.dll"));
    ASSERT_TRUE(site.uninstall());
    expectNothingInstalled();
}

TEST_F(Setup, movesToAnotherHostFolder)
{
    ASSERT_EQ(site.setUp(earlierSetupProgram(), site.hostFolder), done);
    const std::wstring otherHost = installation.path(L"Mastercam 2");
    layOutHost(otherHost);
    ASSERT_EQ(site.setUp(setupProgram(), otherHost + L'\\'), done);
    EXPECT_EQ(entryText(L"HostFolder"), otherHost);
    EXPECT_EQ(readBytes(otherHost + L"\\chooks\\torvapdm.dll"), packed(L"torvapdm.dll"));
    EXPECT_FALSE(std::filesystem::exists(site.hostFolder + L"\\chooks"));
    ASSERT_TRUE(site.uninstall());
    EXPECT_FALSE(std::filesystem::exists(otherHost + L"\\chooks"));
    expectNothingInstalled();
}

TEST_F(Setup, takesOverACopiedLibrary)
{
    const std::wstring hooks = site.hostFolder + L"\\chooks";
    std::filesystem::create_directories(hooks);
    writeBytes(site.library(), "a library of another version");
    ASSERT_EQ(site.setUp(), done);
    EXPECT_EQ(readBytes(site.library()), packed(L"torvapdm.dll"));
    ASSERT_TRUE(site.uninstall());
    EXPECT_TRUE(std::filesystem::is_empty(hooks));
}

TEST_F(Setup, leavesTheUsersOwnFilesAndFolders)
{
    const std::wstring otherHook = site.hostFolder + L"\\chooks\\other.dll";
    const std::wstring ownFile = site.addInFolder + L"\\docs\\own notes.txt";
    std::filesystem::create_directories(site.hostFolder + L"\\chooks");
    std::filesystem::create_directories(site.addInFolder + L"\\docs");
    const State before = files();
    ASSERT_EQ(site.setUp(), done);
    ASSERT_TRUE(site.uninstall());
    EXPECT_EQ(files(), before);
    ASSERT_EQ(site.setUp(earlierSetupProgram(), site.hostFolder), done);
    writeBytes(otherHook, "another hook");
    writeBytes(ownFile, "notes");
    ASSERT_EQ(site.setUp(), done);
    ASSERT_TRUE(site.uninstall());
    EXPECT_EQ(readBytes(otherHook), "another hook");
    EXPECT_EQ(readBytes(ownFile), "notes");
    EXPECT_EQ(pathsBelow(site.addInFolder),
              (std::set<std::wstring>{L"docs", L"docs\\own notes.txt"}));
}

TEST_F(Setup, removesItsFoldersOnceEmpty)
{
    ASSERT_EQ(site.setUp(earlierSetupProgram(), site.hostFolder), done);
    writeBytes(site.addInFolder + L"\\bench\\own notes.txt", "notes");
    ASSERT_EQ(site.setUp(), done);
    EXPECT_EQ(installed(L"bench\\own notes.txt"), "notes");
    DeleteFileW((site.addInFolder + L"\\bench\\own notes.txt").c_str());
    ASSERT_TRUE(site.uninstall());
    expectNothingInstalled();
}

TEST_F(Setup, refusesToOverwriteForeignFiles)
{
    std::filesystem::create_directories(site.addInFolder + L"\\docs");
    for (const wchar_t* name : {L"\\manual.html", L"\\docs\\zemlink.1", L"\\uninstall.exe"}) {
        writeBytes(site.addInFolder + name, "somebody else's");
        const State before = files();
        EXPECT_EQ(site.setUp(), cannotWrite) << toUtf8(name);
        EXPECT_EQ(files(), before) << toUtf8(name);
        EXPECT_EQ(entry(), State()) << toUtf8(name);
        DeleteFileW((site.addInFolder + name).c_str());
    }
    // A program with version information, but not setup's.
    std::filesystem::copy_file(packedFolder() + L"\\zemlink.exe",
                               site.addInFolder + L"\\uninstall.exe");
    EXPECT_EQ(site.setUp(), cannotWrite);
    DeleteFileW((site.addInFolder + L"\\uninstall.exe").c_str());
    EXPECT_EQ(site.setUp(), done);
}

TEST_F(Setup, replacesItsLeftUninstaller)
{
    ASSERT_EQ(site.setUp(earlierSetupProgram(), site.hostFolder), done);
    ASSERT_EQ(site.uninstallInPlace(), done);
    EXPECT_EQ(pathsBelow(site.addInFolder), std::set<std::wstring>{L"uninstall.exe"});
    const ToolRun help(installation, L"/S /? _?=" + site.addInFolder, L"help",
                       site.addInFolder + L"\\uninstall.exe");
    EXPECT_EQ(help.waitForExit(), done);
    EXPECT_NE(help.output().find("_?=FOLDER\t"), std::string::npos);
    ASSERT_EQ(site.setUp(), done);
    EXPECT_EQ(pathsBelow(site.addInFolder), installedPaths());
    ASSERT_TRUE(site.uninstall());
    EXPECT_TRUE(waitUntil([&] { return !std::filesystem::exists(site.addInFolder); }));
}

TEST_F(Setup, refusesForeignFilesWhenMoving)
{
    ASSERT_EQ(site.setUp(earlierSetupProgram(), site.hostFolder), done);
    const std::wstring otherFolder = installation.path(L"tools");
    std::filesystem::create_directory(otherFolder);
    writeBytes(otherFolder + L"\\zemlink.exe", "somebody else's");
    const State before = files();
    const State entryBefore = entry();
    const std::wstring move = quoted(setupProgram()) + L" /S /D=" + otherFolder;
    EXPECT_EQ(Process(move).waitForExit(), cannotWrite);
    EXPECT_EQ(files(), before);
    EXPECT_EQ(entry(), entryBefore);
}

TEST_F(Setup, runsOneAtATime)
{
    ASSERT_EQ(site.setUp(earlierSetupProgram(), site.hostFolder), done);
    const State before = files();
    const State entryBefore = entry();
    {
        const Process other(quoted(setupProgram())); // waits on its first page
        ASSERT_TRUE(waitUntil(isSetupRunning));
        EXPECT_EQ(site.setUp(), inUse);
        EXPECT_EQ(site.uninstallInPlace(), inUse);
        EXPECT_EQ(files(), before);
        EXPECT_EQ(entry(), entryBefore);
    }
    EXPECT_EQ(site.setUp(), done);
}

TEST_F(Setup, removesOnlyItsOwnEntry)
{
    HKEY key = nullptr;
    ASSERT_EQ(RegCreateKeyW(HKEY_LOCAL_MACHINE, entryKey, &key), ERROR_SUCCESS);
    const wchar_t publisher[] = L"TORVA AS";
    RegSetValueExW(key, L"Publisher", 0, REG_SZ, reinterpret_cast<const BYTE*>(publisher),
                   sizeof publisher);
    RegCloseKey(key);
    const State before = entry();
    std::filesystem::create_directories(site.addInFolder);
    writeBytes(site.addInFolder + L"\\docs", "a file where the folder should be");
    EXPECT_EQ(site.setUp(), cannotWrite);
    EXPECT_EQ(entry(), before);
}

TEST_F(Setup, leavesAnotherInstallationAlone)
{
    ASSERT_EQ(site.setUp(), done);
    ASSERT_EQ(site.uninstallInPlace(), done);
    const std::wstring otherFolder = installation.path(L"tools");
    const std::wstring arguments = L" /S /HOST=" + quoted(site.hostFolder) + L" /D=";
    ASSERT_EQ(Process(quoted(setupProgram()) + arguments + otherFolder).waitForExit(), done);
    const State entryBefore = entry();
    const State before = filesBelow(otherFolder);
    EXPECT_EQ(site.uninstallInPlace(), done);
    EXPECT_EQ(entry(), entryBefore);
    EXPECT_EQ(filesBelow(otherFolder), before);
    EXPECT_EQ(readBytes(site.library()), packed(L"torvapdm.dll"));
}

// `"/HOST=C:\some folder"`, as programs that quote whole arguments write it.
TEST_F(Setup, readsAQuotedHostOption)
{
    const std::wstring folder = L" /D=" + site.addInFolder;
    const std::wstring option = quoted(L"/HOST=" + site.hostFolder);
    ASSERT_EQ(Process(quoted(setupProgram()) + L" /S " + option + folder).waitForExit(), done);
    EXPECT_EQ(entryText(L"HostFolder"), site.hostFolder);
    EXPECT_EQ(readBytes(site.library()), packed(L"torvapdm.dll"));
    const std::wstring otherHost = installation.path(L"Mastercam 2");
    layOutHost(otherHost);
    const std::wstring otherOption = quoted(L"/host=" + otherHost + L'\\');
    ASSERT_EQ(Process(quoted(setupProgram()) + L' ' + otherOption + L" /S" + folder).waitForExit(),
              done);
    EXPECT_EQ(entryText(L"HostFolder"), otherHost);
    EXPECT_EQ(Process(quoted(setupProgram()) + L" /S " + quoted(L"/HOST=C:\\no host") + folder)
                  .waitForExit(),
              noHost);
    EXPECT_EQ(entryText(L"HostFolder"), otherHost);
}

TEST_F(Setup, readsOptionsWithoutQuotes)
{
    const std::wstring otherHost = installation.path(L"Mill's Mastercam 2");
    layOutHost(otherHost);
    const std::wstring log = installation.path(L"a log.txt");
    std::wstring logWithSlashes = log;
    std::ranges::replace(logWithSlashes, L'\\', L'/');
    const std::wstring options =
        L" /S /HOST=" + otherHost + L" /LOG=" + logWithSlashes + L" /D=" + site.addInFolder;
    ASSERT_EQ(Process(quoted(setupProgram()) + options).waitForExit(), done);
    EXPECT_EQ(entryText(L"HostFolder"), otherHost);
    EXPECT_EQ(count(logLines(log), L"Exit code 0."), 1u);
}

TEST_F(Setup, takesNoFolderForTheOptionHelp)
{
    std::filesystem::create_directory(installation.path(L"help"));
    std::wstring log = installation.path(L"help\\log.txt");
    std::ranges::replace(log, L'\\', L'/');
    const std::wstring options =
        L" /S /LOG=" + log + L" /HOST=" + quoted(site.hostFolder) + L" /D=" + site.addInFolder;
    ASSERT_EQ(Process(quoted(setupProgram()) + options).waitForExit(), done);
    EXPECT_EQ(readBytes(site.library()), packed(L"torvapdm.dll"));
}

TEST_F(Setup, listsItsOptionsAfterAnApostrophe)
{
    const ToolRun run(installation, L"/S /HOST=C:\\Mill's /?", L"setup", setupProgram());
    EXPECT_EQ(run.waitForExit(), done);
    EXPECT_NE(run.output().find("/HOST=FOLDER\t"), std::string::npos);
}

TEST_F(Setup, readsADriveLetterAsItsRoot)
{
    SetCurrentDirectoryW(site.hostFolder.c_str());
    for (const wchar_t* separator : {L"\\", L""}) {
        const std::wstring root = site.hostFolder.substr(0, 2) + separator;
        const std::wstring arguments = L" /S /HOST=" + root + L" /D=" + site.addInFolder;
        EXPECT_EQ(Process(quoted(setupProgram()) + arguments).waitForExit(), noHost)
            << toUtf8(root);
    }
    SetCurrentDirectoryW(programFolder().c_str());
    expectNothingInstalled();
}
