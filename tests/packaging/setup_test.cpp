// The setup program and its uninstaller, run without windows.
#include "packaging/machine_state.h"
#include "packaging/shop.h"
#include "support/bytes.h"
#include "support/processes.h"
#include "support/waiting.h"
#include "zemlink/tool_run.h"

#include <filesystem>
#include <gtest/gtest.h>

using namespace testing_support;

namespace {

constexpr DWORD done = 0;
constexpr DWORD noHost = 3;
constexpr DWORD inUse = 4;
constexpr DWORD cannotWrite = 5;

class Setup : public ::testing::Test {
protected:
    State files() const { return filesBelow(installation.root(), shop.temporaryFolder); }
    static State entry() { return registryBelow(HKEY_LOCAL_MACHINE, entryKey); }
    void expectNothingInstalled() const
    {
        EXPECT_EQ(entry(), State());
        EXPECT_FALSE(std::filesystem::exists(shop.hostFolder + L"\\chooks"));
        EXPECT_FALSE(std::filesystem::exists(installation.path(L"TORVA AS")));
    }
    std::optional<std::string> installed(const std::wstring& name) const
    {
        return readBytes(shop.addInFolder + L'\\' + name);
    }

    Installation installation{Registry::ofTheUser};
    Shop shop{installation};
};

State registry()
{
    State state = registryBelow(HKEY_LOCAL_MACHINE, L"SOFTWARE");
    state.merge(registryBelow(HKEY_CURRENT_USER, L"Software"));
    return state;
}

std::optional<std::string> packed(const std::wstring& name)
{
    return readBytes(packedFolder() + L'\\' + name);
}

// The paths below a folder, from there on.
std::set<std::wstring> pathsBelow(const std::wstring& folder)
{
    std::set<std::wstring> paths;
    for (const auto& found : std::filesystem::recursive_directory_iterator(folder))
        paths.insert(found.path().lexically_relative(folder).wstring());
    return paths;
}

// What of the package lies in the add-in's folder, and what removes it again.
std::set<std::wstring> installedPaths()
{
    std::set<std::wstring> paths = pathsBelow(packedFolder());
    paths.erase(L"torvapdm.dll");
    paths.insert(L"uninstall.exe");
    return paths;
}

bool isSetupRunning()
{
    const HANDLE running =
        OpenMutexW(SYNCHRONIZE, FALSE, L"Global\\TORVA ZEM add-in for Mastercam setup");
    if (running != nullptr)
        CloseHandle(running);
    return running != nullptr;
}

// The host's own program, with the library that was installed.
class RunningHost {
public:
    RunningHost(const Installation& installation, const Shop& shop, const std::string& script)
        : tracePath_(installation.path(L"host.trace")),
          process_(commandLine(installation, shop, script))
    {
    }
    const Process& process() const { return process_; }
    Lines trace() const { return linesOf(fromUtf8(readBytes(tracePath_).value_or(""))); }
    bool isOpen() const
    {
        return waitUntil([this] { return count(trace(), L"m_open(0) -> 0") == 1; });
    }

private:
    static std::wstring commandLine(const Installation& installation, const Shop& shop,
                                    const std::string& script)
    {
        const std::wstring scriptPath = installation.path(L"host.script");
        writeBytes(scriptPath, script);
        return quoted(shop.hostFolder + L"\\Mastercam.exe") + L" --addin " +
               quoted(shop.library()) + L" --script " + quoted(scriptPath) + L" --trace " +
               quoted(installation.path(L"host.trace"));
    }

    const std::wstring tracePath_;
    Process process_;
};

} // namespace

TEST_F(Setup, addsAndRemovesItsFilesAndEntry)
{
    const State filesBefore = filesBelow(L"C:", shop.temporaryFolder);
    const State registryBefore = registry();
    ASSERT_EQ(shop.setUp(), done);
    State added = onlyIn(filesBelow(L"C:", shop.temporaryFolder), filesBefore);
    State expected = onlyIn(filesBelow(shop.addInFolder), State());
    for (const wchar_t* folder :
         {L"TORVA AS\\", L"TORVA AS\\ZEM add-in\\", L"Mastercam 1\\chooks\\"})
        expected.insert(installation.path(folder));
    expected.merge(filesBelow(shop.hostFolder + L"\\chooks"));
    EXPECT_EQ(added, expected) << text(added);
    const State registryAfter = registry();
    EXPECT_EQ(onlyIn(registryAfter, registryBefore), entry());
    EXPECT_EQ(onlyIn(registryBefore, registryAfter), State());
    ASSERT_TRUE(shop.uninstall());
    const State filesInTheEnd = filesBelow(L"C:", shop.temporaryFolder);
    EXPECT_EQ(onlyIn(filesInTheEnd, filesBefore), State());
    EXPECT_EQ(onlyIn(filesBefore, filesInTheEnd), State());
    EXPECT_EQ(registry(), registryBefore);
}

TEST_F(Setup, putsEveryPackedFileInPlace)
{
    ASSERT_EQ(shop.setUp(), done);
    EXPECT_EQ(pathsBelow(shop.addInFolder), installedPaths());
    for (const std::wstring& path : pathsBelow(packedFolder()))
        EXPECT_EQ(
            readBytes(path == L"torvapdm.dll" ? shop.library() : shop.addInFolder + L'\\' + path),
            packed(path))
            << toUtf8(path);
    EXPECT_EQ(pathsBelow(shop.hostFolder + L"\\chooks"), std::set<std::wstring>{L"torvapdm.dll"});
}

TEST_F(Setup, entersItselfAmongTheInstalledPrograms)
{
    ASSERT_EQ(shop.setUp(), done);
    EXPECT_EQ(entryText(L"DisplayName"), L"TORVA ZEM add-in for Mastercam");
    EXPECT_EQ(entryText(L"DisplayVersion"), L"" VERSION_TEXT);
    EXPECT_EQ(entryText(L"Publisher"), L"TORVA AS");
    EXPECT_EQ(entryText(L"InstallLocation"), shop.addInFolder);
    EXPECT_EQ(entryText(L"HostFolder"), shop.hostFolder);
    const std::wstring uninstaller = quoted(shop.addInFolder + L"\\uninstall.exe");
    EXPECT_EQ(entryText(L"UninstallString"), uninstaller);
    EXPECT_EQ(entryText(L"QuietUninstallString"), uninstaller + L" /S");
    for (const wchar_t* name : {L"NoModify", L"NoRepair", L"EstimatedSize"}) {
        DWORD value = 0;
        DWORD size = sizeof value;
        EXPECT_EQ(RegGetValueW(HKEY_LOCAL_MACHINE, entryKey, name, RRF_RT_REG_DWORD, nullptr,
                               &value, &size),
                  ERROR_SUCCESS);
        EXPECT_GE(value, 1u);
    }
}

TEST_F(Setup, installsWhatRuns)
{
    ASSERT_EQ(shop.setUp(), done);
    const RunningHost host(installation, shop, "call TestFunction\nquit\n");
    EXPECT_EQ(host.process().waitForExit(), 0u);
    for (const wchar_t* line : {L"ui m_version(2100) -> 2100", L"ui m_open(0) -> 0",
                                L"ui TestFunction() -> 1", L"ui m_close(0) -> 0"})
        EXPECT_EQ(count(host.trace(), line), 1u) << toUtf8(line);
    const ToolRun tool(installation, L"--version", L"tool", shop.addInFolder + L"\\zemlink.exe");
    EXPECT_EQ(tool.waitForExit(), 0u);
    EXPECT_EQ(tool.output(), "zemlink " VERSION_TEXT "\n");
}

TEST_F(Setup, refusesAFolderWithoutTheHost)
{
    EXPECT_EQ(shop.setUp(setupProgram(), installation.root()), noHost);
    EXPECT_EQ(shop.setUp(setupProgram(), installation.path(L"nowhere")), noHost);
    expectNothingInstalled();
}

TEST_F(Setup, refusesToGuessTheHostsFolder)
{
    EXPECT_EQ(shop.setUp(setupProgram(), L""), noHost);
    EXPECT_EQ(Process(quoted(setupProgram()) + L" /S /D=" + shop.addInFolder).waitForExit(),
              noHost);
    expectNothingInstalled();
}

TEST_F(Setup, rollsBackWhenItCannotWrite)
{
    std::filesystem::create_directories(shop.addInFolder);
    writeBytes(shop.addInFolder + L"\\docs", "a file where the folder should be");
    const State before = files();
    EXPECT_EQ(shop.setUp(), cannotWrite);
    EXPECT_EQ(files(), before);
    EXPECT_EQ(entry(), State());
}

TEST_F(Setup, refusesAnImpossibleFolder)
{
    const std::wstring words = L" /S /HOST=" + quoted(shop.hostFolder) + L" /D=";
    EXPECT_EQ(Process(quoted(setupProgram()) + words + L"Q:\\ZEM add-in").waitForExit(),
              cannotWrite);
    writeBytes(installation.path(L"file"), "");
    const std::wstring belowFile = installation.path(L"file\\ZEM add-in");
    EXPECT_EQ(Process(quoted(setupProgram()) + words + belowFile).waitForExit(), cannotWrite);
    expectNothingInstalled();
}

TEST_F(Setup, keepsAnEarlierVersionItCannotReplace)
{
    ASSERT_EQ(shop.setUp(earlierSetupProgram(), shop.hostFolder), done);
    // In the way of a new file, before any old one goes.
    std::filesystem::create_directory(shop.addInFolder + L"\\zemlink.exe.new");
    const State before = files();
    const State entryBefore = entry();
    EXPECT_EQ(shop.setUp(), cannotWrite);
    EXPECT_EQ(files(), before);
    EXPECT_EQ(entry(), entryBefore);
}

TEST_F(Setup, changesNothingWhileAHostRuns)
{
    ASSERT_EQ(shop.setUp(earlierSetupProgram(), shop.hostFolder), done);
    const RunningHost host(installation, shop, "");
    ASSERT_TRUE(host.isOpen());
    const State before = filesBelow(shop.addInFolder);
    const State libraryBefore = filesBelow(shop.hostFolder);
    const State entryBefore = entry();
    EXPECT_EQ(shop.setUp(), inUse);
    EXPECT_EQ(shop.uninstallInPlace(), inUse);
    EXPECT_EQ(filesBelow(shop.addInFolder), before);
    EXPECT_EQ(filesBelow(shop.hostFolder), libraryBefore);
    EXPECT_EQ(entry(), entryBefore);
}

TEST_F(Setup, staysWithARunningEarlierHost)
{
    ASSERT_EQ(shop.setUp(earlierSetupProgram(), shop.hostFolder), done);
    const RunningHost host(installation, shop, "");
    ASSERT_TRUE(host.isOpen());
    const std::wstring otherHost = installation.path(L"Mastercam 2");
    layOutHost(otherHost);
    EXPECT_EQ(shop.setUp(setupProgram(), otherHost), inUse);
    EXPECT_FALSE(std::filesystem::exists(otherHost + L"\\chooks"));
    EXPECT_EQ(entryText(L"HostFolder"), shop.hostFolder);
}

TEST_F(Setup, changesNothingWhileAPageIsOpen)
{
    ASSERT_EQ(shop.setUp(earlierSetupProgram(), shop.hostFolder), done);
    // A page that the new version does not have: only its own uninstaller knows of it.
    const HANDLE reader =
        CreateFileW((shop.addInFolder + L"\\docs\\part-file.md").c_str(), GENERIC_READ,
                    FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(reader, INVALID_HANDLE_VALUE);
    const State before = files();
    const State entryBefore = entry();
    EXPECT_EQ(shop.setUp(), inUse);
    EXPECT_EQ(shop.uninstallInPlace(), inUse);
    EXPECT_EQ(files(), before);
    EXPECT_EQ(entry(), entryBefore);
    CloseHandle(reader);
    EXPECT_EQ(shop.setUp(), done);
}

TEST_F(Setup, replacesAnEarlierVersion)
{
    ASSERT_EQ(shop.setUp(earlierSetupProgram(), shop.hostFolder), done);
    EXPECT_EQ(entryText(L"DisplayVersion"), L"" EARLIER_VERSION_TEXT);
    EXPECT_TRUE(installed(L"docs\\part-file.md").has_value());
    EXPECT_TRUE(installed(L"bench\\growth.gnuplot").has_value());
    writeBytes(shop.library(), "the earlier library");
    // Where the host lies is remembered.
    ASSERT_EQ(Process(quoted(setupProgram()) + L" /S").waitForExit(), done);
    EXPECT_EQ(entryText(L"DisplayVersion"), L"" VERSION_TEXT);
    EXPECT_EQ(pathsBelow(shop.addInFolder), installedPaths());
    EXPECT_EQ(readBytes(shop.library()), packed(L"torvapdm.dll"));
    ASSERT_TRUE(shop.uninstall());
    expectNothingInstalled();
}

TEST_F(Setup, followsTheHostToAnotherFolder)
{
    ASSERT_EQ(shop.setUp(earlierSetupProgram(), shop.hostFolder), done);
    const std::wstring otherHost = installation.path(L"Mastercam 2");
    layOutHost(otherHost);
    ASSERT_EQ(shop.setUp(setupProgram(), otherHost + L'\\'), done);
    EXPECT_EQ(entryText(L"HostFolder"), otherHost);
    EXPECT_EQ(readBytes(otherHost + L"\\chooks\\torvapdm.dll"), packed(L"torvapdm.dll"));
    EXPECT_FALSE(std::filesystem::exists(shop.hostFolder + L"\\chooks"));
    ASSERT_TRUE(shop.uninstall());
    EXPECT_FALSE(std::filesystem::exists(otherHost + L"\\chooks"));
    expectNothingInstalled();
}

TEST_F(Setup, takesOverACopiedLibrary)
{
    const std::wstring hooks = shop.hostFolder + L"\\chooks";
    std::filesystem::create_directories(hooks);
    writeBytes(shop.library(), "a library of another version");
    ASSERT_EQ(shop.setUp(), done);
    EXPECT_EQ(readBytes(shop.library()), packed(L"torvapdm.dll"));
    ASSERT_TRUE(shop.uninstall());
    EXPECT_TRUE(std::filesystem::is_empty(hooks));
}

TEST_F(Setup, leavesTheUsersOwnFilesAndFolders)
{
    const std::wstring otherHook = shop.hostFolder + L"\\chooks\\other.dll";
    const std::wstring ownFile = shop.addInFolder + L"\\docs\\own notes.txt";
    std::filesystem::create_directories(shop.hostFolder + L"\\chooks");
    std::filesystem::create_directories(shop.addInFolder + L"\\docs");
    const State before = files();
    ASSERT_EQ(shop.setUp(), done);
    ASSERT_TRUE(shop.uninstall());
    EXPECT_EQ(files(), before);
    ASSERT_EQ(shop.setUp(earlierSetupProgram(), shop.hostFolder), done);
    writeBytes(otherHook, "another hook");
    writeBytes(ownFile, "notes");
    ASSERT_EQ(shop.setUp(), done);
    ASSERT_TRUE(shop.uninstall());
    EXPECT_EQ(readBytes(otherHook), "another hook");
    EXPECT_EQ(readBytes(ownFile), "notes");
    EXPECT_EQ(pathsBelow(shop.addInFolder),
              (std::set<std::wstring>{L"docs", L"docs\\own notes.txt"}));
}

TEST_F(Setup, removesItsFoldersOnceEmpty)
{
    ASSERT_EQ(shop.setUp(earlierSetupProgram(), shop.hostFolder), done);
    writeBytes(shop.addInFolder + L"\\bench\\own notes.txt", "notes");
    ASSERT_EQ(shop.setUp(), done);
    EXPECT_EQ(installed(L"bench\\own notes.txt"), "notes");
    DeleteFileW((shop.addInFolder + L"\\bench\\own notes.txt").c_str());
    ASSERT_TRUE(shop.uninstall());
    expectNothingInstalled();
}

TEST_F(Setup, refusesToOverwriteForeignFiles)
{
    std::filesystem::create_directories(shop.addInFolder + L"\\docs");
    for (const wchar_t* name : {L"\\CHANGELOG.md", L"\\docs\\installing.md", L"\\uninstall.exe"}) {
        writeBytes(shop.addInFolder + name, "somebody else's");
        const State before = files();
        EXPECT_EQ(shop.setUp(), cannotWrite) << toUtf8(name);
        EXPECT_EQ(files(), before) << toUtf8(name);
        EXPECT_EQ(entry(), State()) << toUtf8(name);
        DeleteFileW((shop.addInFolder + name).c_str());
    }
    EXPECT_EQ(shop.setUp(), done);
}

TEST_F(Setup, refusesForeignFilesWhenMoving)
{
    ASSERT_EQ(shop.setUp(earlierSetupProgram(), shop.hostFolder), done);
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
    ASSERT_EQ(shop.setUp(earlierSetupProgram(), shop.hostFolder), done);
    const State before = files();
    const State entryBefore = entry();
    {
        const Process other(quoted(setupProgram())); // which waits on its first page
        ASSERT_TRUE(waitUntil(isSetupRunning));
        EXPECT_EQ(shop.setUp(), inUse);
        EXPECT_EQ(shop.uninstallInPlace(), inUse);
        EXPECT_EQ(files(), before);
        EXPECT_EQ(entry(), entryBefore);
    }
    EXPECT_EQ(shop.setUp(), done);
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
    std::filesystem::create_directories(shop.addInFolder);
    writeBytes(shop.addInFolder + L"\\docs", "a file where the folder should be");
    EXPECT_EQ(shop.setUp(), cannotWrite);
    EXPECT_EQ(entry(), before);
}

TEST_F(Setup, leavesAnotherInstallationAlone)
{
    ASSERT_EQ(shop.setUp(), done);
    ASSERT_EQ(shop.uninstallInPlace(), done);
    const std::wstring otherFolder = installation.path(L"tools");
    const std::wstring words = L" /S /HOST=" + quoted(shop.hostFolder) + L" /D=";
    ASSERT_EQ(Process(quoted(setupProgram()) + words + otherFolder).waitForExit(), done);
    const State entryBefore = entry();
    const State before = filesBelow(otherFolder);
    EXPECT_EQ(shop.uninstallInPlace(), done);
    EXPECT_EQ(entry(), entryBefore);
    EXPECT_EQ(filesBelow(otherFolder), before);
    EXPECT_EQ(readBytes(shop.library()), packed(L"torvapdm.dll"));
}

TEST_F(Setup, keepsADrivesRootApart)
{
    SetCurrentDirectoryW(shop.hostFolder.c_str());
    for (const wchar_t* separator : {L"\\", L""}) {
        const std::wstring root = shop.hostFolder.substr(0, 2) + separator;
        const std::wstring words = L" /S /HOST=" + root + L" /D=" + shop.addInFolder;
        EXPECT_EQ(Process(quoted(setupProgram()) + words).waitForExit(), noHost) << toUtf8(root);
    }
    SetCurrentDirectoryW(programFolder().c_str());
    expectNothingInstalled();
}
