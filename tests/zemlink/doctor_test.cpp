// `zemlink status` and `zemlink doctor` on valid and broken installations.
#include "support/companion_program.h"
#include "support/companion_double.h"
#include "support/host_program.h"
#include "support/sockets.h"
#include "tools/zemlink/reports/report.h"
#include "zemlink/tool_run.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <sddl.h>
#include <tlhelp32.h>

using namespace testing_support;
using zemlink::Report;

namespace {

class ZemlinkDoctor : public ::testing::Test {
protected:
    // The exit code, then the names of the problems in order.
    std::vector<std::string> problems() const
    {
        const ToolResult result = runTool(installation, L"doctor --json");
        std::vector<std::string> names{std::to_string(result.exitCode)};
        const Report report = Report::parse(result.output, nullptr, false);
        for (const Report& problem : report.value("problems", Report::array()))
            names.push_back(problem.value("name", ""));
        return names;
    }
    // Waits until these are all; false on timeout.
    bool waitForProblems(const std::vector<std::string>& expected) const
    {
        return waitUntil([&] { return problems() == expected; });
    }
    Report status() const
    {
        return Report::parse(runTool(installation, L"status --json").output, nullptr, false);
    }

    Installation installation{Registry::ofTheUser};
};

std::vector<peer::OwnHandle> threadsOf(DWORD process)
{
    std::vector<peer::OwnHandle> threads;
    const peer::OwnHandle snapshot = peer::ownFile(CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0));
    THREADENTRY32 thread{};
    thread.dwSize = sizeof thread;
    for (BOOL isFound = Thread32First(snapshot.get(), &thread); isFound;
         isFound = Thread32Next(snapshot.get(), &thread))
        if (thread.th32OwnerProcessID == process)
            threads.emplace_back(OpenThread(SYNCHRONIZE, FALSE, thread.th32ThreadID));
    return threads;
}

bool hasOneEnded(const std::vector<peer::OwnHandle>& threads)
{
    return std::ranges::any_of(
        threads,
        [](const peer::OwnHandle& thread) {
            return WaitForSingleObject(thread.get(), 0) == WAIT_OBJECT_0;
        });
}

using ZemlinkStatus = ZemlinkDoctor;
using Names = std::vector<std::string>;

} // namespace

TEST_F(ZemlinkDoctor, findsNoProblemInARealSetup)
{
    installCompanionWithLibrary(installation);
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    const HostProgram host(installation, "");
    ASSERT_TRUE(waitUntil([&] { return host.window() != nullptr; }) && host.waitForCommandFile());
    EXPECT_EQ(runTool(installation, L"doctor").output, "problems: none\n");
    EXPECT_EQ(problems(), Names{"0"});
    const Report report = status();
    EXPECT_EQ(report["installation"], (Report{{"folder", toUtf8(installation.root())},
                                              {"from", "registry value"},
                                              {"exists", true}}));
    EXPECT_EQ(report["companion"], (Report{{"running", true},
                                           {"window", "TORVA ZEM"},
                                           {"process", companion.process().id()},
                                           {"program", toUtf8(installation.path(L"TORVA-ZEM.exe"))},
                                           {"version", report["zemlink"]}}));
    ASSERT_EQ(report["hosts"].size(), 1u);
    EXPECT_EQ(report["hosts"][0]["process"], host.process().id());
    EXPECT_EQ(report["hosts"][0]["answers"], true);
    EXPECT_EQ(report["hosts"][0]["program"], toUtf8(programFolder() + L"Mastercam.exe"));
    EXPECT_EQ(report["hosts"][0]["version"], report["zemlink"]);
    EXPECT_EQ(report["hosts"][0]["addIn"],
              (Report{{"path", toUtf8(programFolder() + L"torvapdm.dll")},
                      {"version", report["zemlink"]}}));
    EXPECT_EQ(report["hosts"][0]["commandFile"],
              (Report{{"path", toUtf8(host.commandFile())}, {"bytes", 0}}));
    EXPECT_EQ(report["port"]["number"], 4559);
    EXPECT_TRUE(waitUntil([&] { return status()["port"]["answers"] == true; }));
}

TEST_F(ZemlinkDoctor, leavesNoEventInTheCompanion)
{
    const Sockets sockets;
    installCompanionWithLibrary(installation);
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    EXPECT_EQ(status()["port"]["number"], 4559);
    EXPECT_EQ(problems(), Names{"0"});
    ASSERT_TRUE(sendToCompanion("hello\n")); // logged after all earlier connections
    ASSERT_TRUE(companion.waitForLog(L"line bytes=6"));
    EXPECT_EQ(companion.count(L"line bytes="), 1u);
}

TEST_F(ZemlinkStatus, showsThatNothingRuns)
{
    writeBytes(installation.path(L"cfg\\settings.ini"), "AlwaysSaveTools=y\n");
    const Report report = status();
    EXPECT_EQ(report["settings"], (Report{{"file", true},
                                          {"UseFtpServer", false},
                                          {"AlwaysSaveTools", true},
                                          {"MCXCATIA", false},
                                          {"MCXIMPORTNC", true}}));
    EXPECT_EQ(report["companion"], (Report{{"running", false}, {"window", nullptr}}));
    EXPECT_EQ(report["hosts"], Report::array());
    EXPECT_EQ(report["commitsWaiting"], Report::array());
    EXPECT_EQ(report["port"]["answers"], false);
}

TEST_F(ZemlinkDoctor, findsEachProblem)
{
    const LineReceiver other; // uses the port
    RemoveDirectoryW(installation.path(L"commit").c_str());
    writeBytes(installation.path(L"cfg\\settings.ini"), "UseFtpServer=y");
    writeBytes(installation.path(L"temp\\mastercam-4294967292.dat"), "");
    const std::string commit("\1\0\0\0\1\0\0\0a\0", 10);
    writeBytes(installation.path(L"temp\\torvapdm-4294967288.dat"), commit);
    writeBytes(installation.path(L"temp\\torvapdm-4294967292.dat"), commit + commit);
    writeBytes(installation.path(L"temp\\torvapdm-4294967292.taken"), "taken 10\n");
    EXPECT_EQ(problems(),
              (Names{"1", "companion-missing", "commit-folder-missing", "setting-cut",
                     "stale-command-file", "commits-left", "commits-unknown", "port-held"}));
}

TEST_F(ZemlinkDoctor, findsTheDialogOfAHost)
{
    installation.installCompanion(programFolder() + L"TORVA-ZEM.exe");
    const HostProgram host(installation, "");
    ASSERT_TRUE(host.waitForCommandFile());
    ASSERT_TRUE(writeRequest(host.commandFile(), openRequest(17, "C:\\none.mcam")));
    ASSERT_NE(waitForWindowTitled(L"TORVA ZEM"), nullptr);
    ASSERT_TRUE(waitForProblems({"1", "host-in-dialog"}));
    EXPECT_NE(runTool(installation, L"doctor").output.find("shows \"TORVA ZEM\""),
              std::string::npos);
}

TEST_F(ZemlinkDoctor, findsAHostThatDoesNotAnswer)
{
    installation.installCompanion(programFolder() + L"TORVA-ZEM.exe");
    const HostProgram host(installation,
                           "wait-for m_notify(37) 60000\nset geo_filename C:\\own.mcam\n"
                           "notify 5\ncall m_save 0\n");
    const CompanionProgram companion(installation); // else the save starts it
    ASSERT_NE(companion.waitForWindow(), nullptr);
    ASSERT_TRUE(waitUntil([&] { return host.window() != nullptr; }) && host.waitForCommandFile());
    EXPECT_TRUE(waitForProblems({"0"}));
    EXPECT_TRUE(host.sendEvent(37));
    EXPECT_TRUE(waitForProblems({"1", "host-not-answering"})); // it never returns from the save
    EXPECT_EQ(status()["hosts"][0]["answers"], false);
}

TEST_F(ZemlinkDoctor, findsAHostWithoutAMessageWindow)
{
    installation.installCompanion(programFolder() + L"TORVA-ZEM.exe");
    const HostProgram host(installation, "call m_close 0\ncall m_open 0\n");
    EXPECT_TRUE(waitForProblems({"1", "host-without-message-window"}));
}

TEST_F(ZemlinkDoctor, findsAListenerThatHasEnded)
{
    installation.installCompanion(programFolder() + L"TORVA-ZEM.exe");
    const HostProgram host(installation, "");
    ASSERT_TRUE(host.waitForTrace(L"ui m_open(0) -> ")); // the listener's thread has started
    const std::vector<peer::OwnHandle> threads = threadsOf(host.process().id());
    ASSERT_TRUE(writeRequest(host.commandFile(), std::string(65537, 'x')));
    EXPECT_TRUE(waitForProblems({"1", "command-file-too-long"}));
    ASSERT_TRUE(waitUntil([&] { return hasOneEnded(threads); }));
    writeBytes(host.commandFile(), "-1 x");
    EXPECT_TRUE(waitForProblems({"1", "request-not-taken"}));
}

TEST_F(ZemlinkDoctor, findsAnAddInOfAnotherVersion)
{
    installation.installCompanion(programFolder() + L"TORVA-ZEM.exe");
    std::string library = readBytes(programFolder() + L"torvapdm.dll").value();
    const size_t version = library.find("\xBD\x04\xEF\xFE"); // of the version's fixed part
    ASSERT_NE(version, std::string::npos);
    library[version + 8] = 9; // the minor number
    const std::wstring copy = installation.path(L"torvapdm.dll");
    writeBytes(copy, library);
    const HostProgram host(installation, "", L"host", programFolder() + L"Mastercam.exe", copy);
    ASSERT_TRUE(host.waitForCommandFile());
    ASSERT_TRUE(waitForProblems({"1", "add-in-version"}));
    EXPECT_EQ(status()["hosts"][0]["addIn"],
              (Report{{"path", toUtf8(copy)}, {"version", "1.9.0"}}));
}

TEST_F(ZemlinkDoctor, findsACompanionOfAnotherFolder)
{
    installCompanionWithLibrary(installation);
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    const std::wstring other = installation.path(L"other");
    for (const wchar_t* below : {L"", L"\\temp", L"\\commit"})
        CreateDirectoryW((other + below).c_str(), nullptr);
    registerInstallation(other);
    EXPECT_TRUE(waitForProblems({"1", "companion-missing", "companion-elsewhere"}));
}

TEST_F(ZemlinkDoctor, listsWhatIsFine)
{
    installation.installCompanion(programFolder() + L"TORVA-ZEM.exe");
    const ToolResult result = runTool(installation, L"doctor --all");
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_EQ(result.output.find("problems: none\nfine:\n  - The installation folder exists.\n"),
              0u)
        << result.output;
    EXPECT_EQ(result.output.find("Every host"), std::string::npos) << result.output;
}

TEST_F(ZemlinkDoctor, findsRequestsDuringABackplot)
{
    installCompanionWithLibrary(installation);
    const CompanionProgram companion(installation);
    const HostProgram host(installation, "set backplot true\n"
                                         "wait-for m_notify(37) 60000\n"
                                         "set backplot false\n");
    ASSERT_TRUE(waitUntil([&] { return host.window() != nullptr; }) && host.waitForCommandFile());
    ASSERT_EQ(companion.run(L"--send bracket --id 17"), carriedOut);
    ASSERT_TRUE(companion.waitForLog(L"taken id=17"));
    EXPECT_EQ(problems(), (Names{"1", "request-pending"}));
    EXPECT_NE(runTool(installation, L"doctor").output.find("so that a backplot runs in it."),
              std::string::npos);
    ASSERT_EQ(companion.run(L"--send bracket --id 18"), carriedOut);
    ASSERT_TRUE(companion.waitForLog(L"taken id=18"));
    EXPECT_EQ(problems(), (Names{"1", "request-pending", "request-superseded"}));
    EXPECT_TRUE(host.sendEvent(37));
    ASSERT_TRUE(host.waitForTrace(L"CFile_DoFileSave("));
    EXPECT_EQ(problems(), (Names{"1", "request-superseded"}));
}

TEST_F(ZemlinkDoctor, findsMachineSettingsOfAnEndedHost)
{
    installation.installCompanion(programFolder() + L"TORVA-ZEM.exe");
    writeBytes(installation.path(L"temp\\mcsettings-17.txt"), "17|3|0|C:\\Mill.mcam-mmd\r\n");
    EXPECT_EQ(problems(), (Names{"1", "machine-settings-left"}));
}

TEST_F(ZemlinkDoctor, findsAnotherProgramOnTheCompanionsPort)
{
    const LineReceiver other;
    installCompanionWithLibrary(installation);
    const CompanionProgram companion(installation);
    ASSERT_TRUE(companion.waitForLog(L"port-taken"));
    EXPECT_TRUE(waitForProblems({"1", "port-held"}));
    EXPECT_EQ(status()["port"]["owner"], "another program, by the Companion's log");
}

TEST_F(ZemlinkDoctor, knowsThatTheCompanionHasThePort)
{
    installCompanionWithLibrary(installation);
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    EXPECT_TRUE(waitUntil(
        [&] { return status()["port"].value("owner", "").starts_with("the Companion"); }));
}

TEST_F(ZemlinkDoctor, findsACommitThatAHiddenCompanionRefused)
{
    installation.installCompanion(programFolder() + L"TORVA-ZEM.exe");
    CompanionDouble companion;
    ASSERT_TRUE(companion.holdSemaphore());
    EXPECT_EQ(problems(), (Names{"1", "companion-without-window", "port-silent"}));
    const HostProgram host(installation, "wait-for OnFileNew 60000\n"
                                         "set geo_filename C:\\Parts\\a.mcam\n"
                                         "call m_save 0\n");
    ASSERT_TRUE(host.waitForCommandFile());
    ASSERT_TRUE(writeRequest(host.commandFile(), "\xEF\xBB\xBF"
                                                 "17 \n"));
    ASSERT_TRUE(host.waitForTrace(L"ui m_save(0)"));
    EXPECT_EQ(count(host.trace(), L"message-box"), 0u);
    EXPECT_TRUE(
        waitForProblems({"1", "companion-without-window", "commit-refused", "port-silent"}));
    EXPECT_NE(runTool(installation, L"doctor").output.find("The commit of C:\\Parts\\a.mcam"),
              std::string::npos);
}

TEST_F(ZemlinkDoctor, findsAHostWithoutAddIn)
{
    installation.installCompanion(programFolder() + L"TORVA-ZEM.exe");
    const Process host(quoted(programFolder() + L"Mastercam.exe"));
    EXPECT_TRUE(waitForProblems({"1", "add-in-missing"}));
    EXPECT_NE(runTool(installation, L"doctor").output.find("has not loaded the add-in."),
              std::string::npos);
}

TEST_F(ZemlinkDoctor, findsHostsWithDifferentAddIns)
{
    installation.installCompanion(programFolder() + L"TORVA-ZEM.exe");
    const std::wstring copy = installation.path(L"torvapdm.dll");
    ASSERT_TRUE(CopyFileW((programFolder() + L"torvapdm.dll").c_str(), copy.c_str(), TRUE));
    const HostProgram one(installation, "", L"one");
    const HostProgram two(installation, "", L"two", programFolder() + L"Mastercam.exe", copy);
    ASSERT_TRUE(one.waitForCommandFile() && two.waitForCommandFile());
    EXPECT_TRUE(waitForProblems({"1", "add-in-elsewhere"}));
}

namespace {

constexpr wchar_t setupKey[] = L"Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\"
                               L"TORVA ZEM add-in for Mastercam";

// The entry that setup makes for a host in this folder.
class EntryOfSetup {
public:
    explicit EntryOfSetup(const std::wstring& hostFolder)
    {
        EXPECT_EQ(RegSetKeyValueW(HKEY_LOCAL_MACHINE, setupKey, L"HostFolder", REG_SZ,
                                  hostFolder.c_str(),
                                  static_cast<DWORD>((hostFolder.size() + 1) * sizeof(wchar_t))),
                  ERROR_SUCCESS);
    }
    ~EntryOfSetup() { RegDeleteKeyW(HKEY_LOCAL_MACHINE, setupKey); }
    EntryOfSetup(const EntryOfSetup&) = delete;
    EntryOfSetup& operator=(const EntryOfSetup&) = delete;
};

// Replaces the access list.
void setAccess(const std::wstring& path, const wchar_t* list)
{
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    ASSERT_TRUE(ConvertStringSecurityDescriptorToSecurityDescriptorW(list, SDDL_REVISION_1,
                                                                     &descriptor, nullptr));
    EXPECT_TRUE(SetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, descriptor));
    LocalFree(descriptor);
}

} // namespace

TEST_F(ZemlinkDoctor, findsThatWhatSetupInstalledIsGone)
{
    installation.installCompanion(programFolder() + L"TORVA-ZEM.exe");
    const EntryOfSetup entry(installation.path(L"host"));
    EXPECT_EQ(problems(), (Names{"1", "host-folder-missing"}));
    CreateDirectoryW(installation.path(L"host").c_str(), nullptr);
    EXPECT_EQ(problems(), (Names{"1", "add-in-not-installed"}));
    CreateDirectoryW(installation.path(L"host\\chooks").c_str(), nullptr);
    writeBytes(installation.path(L"host\\chooks\\torvapdm.dll"), "");
    EXPECT_EQ(problems(), Names{"0"});
}

TEST_F(ZemlinkDoctor, findsAnAddInThatSetupDidNotInstall)
{
    installation.installCompanion(programFolder() + L"TORVA-ZEM.exe");
    const std::wstring folder = programFolder().substr(0, programFolder().size() - 1);
    const EntryOfSetup entry(folder);
    const HostProgram host(installation, "");
    ASSERT_TRUE(host.waitForCommandFile());
    EXPECT_TRUE(waitForProblems({"1", "add-in-not-installed", "add-in-elsewhere"}));
}

TEST_F(ZemlinkDoctor, findsWhatOthersMayWrite)
{
    installation.installCompanion(programFolder() + L"TORVA-ZEM.exe");
    EXPECT_EQ(problems(), Names{"0"});
    setAccess(installation.path(L"temp"), L"D:(A;;FA;;;SY)(A;;FA;;;BA)(A;;FA;;;WD)");
    EXPECT_EQ(problems(), (Names{"1", "writable-by-others"}));
    const std::string text = runTool(installation, L"doctor").output;
    EXPECT_NE(text.find("write to " + toUtf8(installation.path(L"temp")) + " ("), std::string::npos)
        << text;
    setAccess(installation.path(L"temp"), L"D:(A;;FA;;;SY)(A;;FA;;;BA)(A;;FR;;;WD)");
    setAccess(installation.path(L"TORVA-ZEM.exe"), L"D:(A;;FA;;;BA)(A;;FA;;;WD)");
    EXPECT_EQ(problems(), (Names{"1", "writable-by-others"}));
}

TEST_F(ZemlinkDoctor, findsAnAddInThatOthersMayReplace)
{
    installation.installCompanion(programFolder() + L"TORVA-ZEM.exe");
    const std::wstring addIn = installation.path(L"host\\chooks\\torvapdm.dll");
    std::filesystem::create_directories(installation.path(L"host\\chooks"));
    writeBytes(addIn, "");
    const EntryOfSetup entry(installation.path(L"host"));
    EXPECT_EQ(problems(), Names{"0"});
    setAccess(addIn, L"D:(A;;FA;;;BA)(A;;FA;;;WD)");
    EXPECT_EQ(problems(), (Names{"1", "writable-by-others"}));
    EXPECT_NE(runTool(installation, L"doctor").output.find(toUtf8(addIn) + " ("),
              std::string::npos);
}

TEST_F(ZemlinkDoctor, findsAWorkingCopyOutsideAscii)
{
    installation.installCompanion(programFolder() + L"TORVA-ZEM.exe");
    writeBytes(installation.path(L"sys\\working-copies.txt"),
               "17 | 17 | C:\\a.mcam\n- | 43 | C:\\\xC3\x84.mcam\n5 | 0 | \n");
    EXPECT_EQ(problems(), (Names{"1", "copy-not-ascii"}));
}

TEST_F(ZemlinkDoctor, findsThatTempIsNotWritable)
{
    installation.installCompanion(programFolder() + L"TORVA-ZEM.exe");
    EXPECT_EQ(problems(), Names{"0"});
    RemoveDirectoryW(installation.path(L"temp").c_str());
    EXPECT_EQ(problems(), (Names{"1", "temp-not-writable"}));
    const std::string text = runTool(installation, L"doctor").output;
    EXPECT_NE(
        text.find("what: No file can be created in " + toUtf8(installation.path(L"temp")) + ": "),
        std::string::npos)
        << text;
    EXPECT_NE(text.find("(error 3)"), std::string::npos) << text;
}

TEST_F(ZemlinkDoctor, leavesTempEmpty)
{
    runTool(installation, L"doctor");
    EXPECT_TRUE(RemoveDirectoryW(installation.path(L"temp").c_str()));
}

TEST_F(ZemlinkDoctor, findsAMissingOrNonAsciiFolder)
{
    registerInstallation(installation.path(L"nowhere"));
    EXPECT_EQ(problems(), (Names{"1", "folder-missing", "companion-missing", "temp-not-writable",
                                 "commit-folder-missing"}));
    const std::wstring foreign = installation.path(L"\u00C4\u20AC");
    for (const wchar_t* below : {L"", L"\\temp", L"\\commit"})
        CreateDirectoryW((foreign + below).c_str(), nullptr);
    writeBytes(foreign + L"\\TORVA-ZEM.exe", "");
    registerInstallation(foreign);
    EXPECT_EQ(problems(), (Names{"1", "folder-not-ascii"}));
    EXPECT_EQ(status()["installation"]["folder"], toUtf8(foreign));
}
