// Which facts are problems, and the texts for them.
#include "tools/zemlink/reports/problems.h"
#include "tests/zemlink/facts_fixture.h"

#include <gtest/gtest.h>

using namespace zemlink;
using namespace testing_support;

namespace {

const Result denied = {5, "Access denied. (error 5)"};
const Result refused = {10061, "Connection refused. (error 10061)"};

void expectOnly(const Facts& facts, const std::string& name, const std::string& what)
{
    const std::vector<Problem> problems = findProblems(facts);
    ASSERT_EQ(problems.size(), 1u) << name;
    EXPECT_EQ(problems[0].name, name);
    EXPECT_EQ(std::ranges::count(problemNames(), name), 1);
    EXPECT_EQ(problems[0].what, what);
    EXPECT_NE(problems[0].advice, "");
}

} // namespace

TEST(Problems, areNoneInASoundInstallation)
{
    EXPECT_TRUE(findProblems(soundFacts()).empty());
}

TEST(Problems, includeMissingAndReadOnlyFolders)
{
    struct Row {
        Result Facts::*fact;
        const char* name;
        const char* what;
    };
    const Row rows[] = {
        {&Facts::tempWritable, "temp-not-writable",
         "No file can be created in C:\\TORVA\\ZEM\\temp: "},
        {&Facts::commitFolderFound, "commit-folder-missing", "C:\\TORVA\\ZEM\\commit: "},
        {&Facts::programFound, "companion-missing", "C:\\TORVA\\ZEM\\TORVA-ZEM.exe: "},
        {&Facts::folderFound, "folder-missing", "The installation folder C:\\TORVA\\ZEM: "},
    };
    for (const Row& row : rows) {
        Facts facts = soundFacts();
        facts.*row.fact = denied;
        expectOnly(facts, row.name, row.what + denied.text);
    }
}

TEST(Problems, includeAHostWithoutCommandFile)
{
    Facts facts = soundFacts();
    facts.hosts.push_back({4713, L"plate.mcam"});
    expectOnly(facts, "host-without-command-file",
               "The host with process 4713 has no command file in C:\\TORVA\\ZEM\\temp.");
}

TEST(Problems, includeAHostThatCannotServe)
{
    struct Row {
        void (*change)(Facts&);
        const char* name;
        const char* what;
    };
    const Row rows[] = {
        {[](Facts& facts) {
             facts.hosts[0].isAnswering = false;
             facts.hosts[0].isBlocked = true;
         },
         "host-not-answering",
         "The host with process 4711 does not answer messages: it is at work, or it was told to "
         "save a "
         "document that is not the Companion's after it had reported a save of its own, and does "
         "not "
         "return from that."},
        {[](Facts& facts) {
             facts.hosts[0].isBlocked = true;
             facts.hosts[0].dialog = L"Options";
         },
         "host-in-dialog",
         "The host with process 4711 shows \"Options\": requests to open a file wait."},
        {[](Facts& facts) { facts.hosts[0].isBlocked = true; }, "host-in-dialog",
         "The host with process 4711 takes no input: requests to open a file wait."},
        {[](Facts& facts) { facts.hosts[0].hasMessageWindow = false; },
         "host-without-message-window",
         "The host with process 4711 has no message window: it takes requests to open a file, but "
         "does not carry them out."},
        {[](Facts& facts) { facts.hosts[0].addInVersion = "0.9.0"; }, "add-in-version",
         "The host with process 4711 has loaded version 0.9.0 of the add-in, "
         "C:\\Mastercam\\chooks\\torvapdm.dll; this is version 1.0.0."},
        {[](Facts& facts) {
             facts.commandFiles[0].bytes = 12;
             facts.commandFiles[0].isLeft = true;
         },
         "request-not-taken",
         "C:\\TORVA\\ZEM\\temp\\mastercam-4711.dat has held a request of 12 bytes for two "
         "seconds: the add-in has stopped reading it."},
        {[](Facts& facts) {
             facts.companion.program = L"D:\\ZEM\\TORVA-ZEM.exe";
             facts.companion.isElsewhere = true;
         },
         "companion-elsewhere",
         "The Companion is running from D:\\ZEM\\TORVA-ZEM.exe, but hosts use C:\\TORVA\\ZEM."},
    };
    for (const Row& row : rows) {
        Facts facts = soundFacts();
        row.change(facts);
        expectOnly(facts, row.name, row.what);
    }
}

TEST(Problems, includeUntakenCommandLineCommits)
{
    Facts facts = soundFacts();
    facts.commitFiles = {{L"C:\\TORVA\\ZEM\\temp\\torvapdm-1.dat", 1, false, 0, "commit", true}};
    EXPECT_TRUE(findProblems(facts).empty());
    facts.companion = {};
    facts.port = {refused};
    expectOnly(facts, "commits-left",
               "C:\\TORVA\\ZEM\\temp\\torvapdm-1.dat: these commits came from a command line "
               "and were not taken.");
}

TEST(Problems, includeANonAsciiFolder)
{
    Facts facts = soundFacts();
    facts.folder.path = L"C:\\W\u00E4rme";
    expectOnly(facts, "folder-not-ascii",
               "The installation folder C:\\W\xC3\xA4rme is not plain ASCII: requests to open a "
               "file in it fail, and settings and log may not be found.");
}

TEST(Problems, includeUnreadCommandFiles)
{
    Facts facts = soundFacts();
    facts.commandFiles[0].bytes = 65536;
    EXPECT_TRUE(findProblems(facts).empty());
    facts.commandFiles[0].bytes = 65537;
    expectOnly(facts, "command-file-too-long",
               "C:\\TORVA\\ZEM\\temp\\mastercam-4711.dat holds 65537 bytes: the add-in has stopped "
               "reading it.");
    facts.commandFiles[0].isProcessRunning = false;
    expectOnly(facts, "stale-command-file",
               "C:\\TORVA\\ZEM\\temp\\mastercam-4711.dat: its process 4711 has ended.");
}

TEST(Problems, includeCommitsOfAnEndedCompanion)
{
    Facts facts = soundFacts();
    const std::wstring path = L"C:\\TORVA\\ZEM\\temp\\torvapdm-9.dat";
    for (const CommitFile& sound : {CommitFile{path, 9, true, 0, "x", true},
                                    {path, 9, true, 0, "x"},
                                    {path, 9, false, 10, "", true},
                                    {path, 9, false, 0, {}, true}}) {
        facts.commitFiles = {sound};
        EXPECT_TRUE(findProblems(facts).empty());
    }
    facts.commitFiles = {{path, 9, false, 0, "x", true}};
    expectOnly(facts, "commits-left",
               "C:\\TORVA\\ZEM\\temp\\torvapdm-9.dat: the Companion's process 9 ended before it "
               "took these commits.");
}

TEST(Problems, includeCommitsWithoutABookmark)
{
    Facts facts = soundFacts();
    facts.commitFiles = {{L"C:\\a.dat", 9, false, 0, "x"}};
    expectOnly(facts, "commits-unknown",
               "C:\\a.dat: no bookmark: it is unknown which of these commits the Companion's "
               "process 9 took before it ended.");
    facts.companion = {};
    facts.port = {refused};
    facts.commitFiles[0].process = 1;
    expectOnly(facts, "commits-unknown",
               "C:\\a.dat: no bookmark: it is unknown which of these commits from a command line "
               "have been taken.");
}

TEST(Problems, includeAPortInUse)
{
    Facts facts = soundFacts();
    facts.port.holder = 99;
    facts.port.program = L"C:\\Other\\server.exe";
    expectOnly(facts, "port-held", "Process 99 (C:\\Other\\server.exe) uses port 4559.");
    facts.port.answer = refused; // it listens on another address
    expectOnly(facts, "port-held", "Process 99 (C:\\Other\\server.exe) uses port 4559.");
    facts.port = Port();
    facts.port.holder = 99;
    expectOnly(facts, "port-held", "Process 99 uses port 4559.");
    facts = soundFacts();
    facts.companion = {};
    facts.port = Port();
    expectOnly(facts, "port-held", "Another program uses port 4559.");
    facts = soundFacts();
    facts.port = Port();
    facts.companion.hasPort = false;
    expectOnly(facts, "port-held",
               "Another program uses port 4559; the Companion's log has that it did not get it.");
}

TEST(Problems, excludeTheCompanionsPort)
{
    Facts facts = soundFacts();
    facts.companion.process.reset(); // it has no window
    facts.port.holder = 13;
    facts.port.program = L"D:\\ZEM\\torva-zem.EXE";
    ASSERT_EQ(findProblems(facts).size(), 1u);
    EXPECT_EQ(findProblems(facts)[0].name, "companion-without-window");
    facts = soundFacts();
    facts.port = Port(); // the process is unknown
    EXPECT_TRUE(findProblems(facts).empty());
    facts.companion.hasPort = true;
    EXPECT_TRUE(findProblems(facts).empty());
    facts.companion = {};
    facts.port.answer = refused; // no program runs
    EXPECT_TRUE(findProblems(facts).empty());
}

TEST(Problems, includeAnUnreachableCompanion)
{
    Facts facts = soundFacts();
    facts.port = Port();
    facts.port.answer = refused;
    expectOnly(
        facts, "port-silent",
        "The Companion is running, but no program listens on port 4559 at the address to which "
        "hosts send: Connection refused. (error 10061)");
    facts = soundFacts();
    facts.companion.process.reset();
    expectOnly(facts, "companion-without-window",
               "The Companion is running, but has no window that hosts can find: a host passes a "
               "commit to a second start of the Companion, which refuses it.");
}

TEST(Problems, includeACutSetting)
{
    Facts facts = soundFacts();
    facts.settings = "UseFtpServer=y";
    expectOnly(facts, "setting-cut",
               "The last line of C:\\TORVA\\ZEM\\cfg\\settings.ini has no line end: its value "
               "loses its last character.");
    facts.settings.reset();
    EXPECT_TRUE(findProblems(facts).empty());
}

namespace {

// The Companion has sent request 17 to the only host, which has taken it.
Facts factsWithARequest()
{
    Facts facts = soundFacts();
    facts.sentRequests = {{17, 4711, "C:\\a.mcam"}};
    facts.machineSettings = {{L"C:\\TORVA\\ZEM\\temp\\mcsettings-17.txt", 17, 1000}};
    return facts;
}

const std::string taken =
    "Request 17 (C:\\a.mcam) has been taken by the host with process 4711, but "
    "its load has not begun: ";
const std::string leftSettings = "C:\\TORVA\\ZEM\\temp\\mcsettings-17.txt: no host has loaded the "
                                 "file of this request; ";

} // namespace

TEST(Problems, includeAPendingRequest)
{
    Facts facts = factsWithARequest();
    expectOnly(facts, "request-pending",
               taken + "the host's window takes input, so that a backplot runs in it.");
    facts.hosts[0].isAnswering = false;
    EXPECT_EQ(findProblems(facts)[0].what, taken + "the host does not answer messages.");
    facts.hosts[0].isAnswering = true;
    facts.hosts[0].isBlocked = true;
    EXPECT_EQ(findProblems(facts)[0].what, taken + "a dialog is open in the host.");
    facts.hosts[0].isBlocked = false;
    facts.hosts[0].hasMessageWindow = false;
    EXPECT_EQ(findProblems(facts)[0].what, taken + "the host has no message window.");
    EXPECT_EQ(findProblems(facts)[0].advice, "Restart the host, then send the file again.");
    facts = factsWithARequest();
    facts.sentRequests.clear(); // a Companion that keeps no log
    expectOnly(facts, "request-pending",
               "Request 17 has been taken by the host with process 4711, but its load has not "
               "begun: the host's window takes input, so that a backplot runs in it.");
}

TEST(Problems, includeASupersededRequest)
{
    const std::string what = " was replaced by a later one before the host with process 4711 was "
                             "ready: C:\\TORVA\\ZEM\\temp\\mcsettings-17.txt is left.";
    Facts facts = factsWithARequest();
    facts.sentRequests.push_back({18, 4711, "C:\\b.mcam"});
    expectOnly(facts, "request-superseded", "Request 17 (C:\\a.mcam)" + what);
    facts.sentRequests.back().host = 4712;
    EXPECT_EQ(findProblems(facts)[0].name, "request-pending");
    facts.sentRequests.clear(); // a Companion that keeps no log
    facts.loads = {{"C:\\b.mcam", 7, ""}};
    facts.lastLoadWritten = 999;
    EXPECT_EQ(findProblems(facts)[0].name, "request-pending");
    facts.lastLoadWritten = 1001;
    expectOnly(facts, "request-superseded", "Request 17" + what);
    facts.lastLoadWritten = 0;
    facts.machineSettings.push_back({L"C:\\x.txt", 18, 1001});
    EXPECT_EQ(findProblems(facts)[1].name, "request-superseded");
}

TEST(Problems, includeMachineSettingsThatAreLeft)
{
    Facts facts = factsWithARequest();
    facts.missingFiles = {"C:\\a.mcam"};
    expectOnly(facts, "machine-settings-left", leftSettings + "the host found no such file.");
    facts = factsWithARequest();
    facts.sentRequests[0].host = 4715;
    expectOnly(facts, "machine-settings-left", leftSettings + "its host has ended.");
    facts = factsWithARequest();
    facts.loads = {{"C:\\a.mcam", 1, ""}};
    facts.lastLoadWritten = 1000;
    expectOnly(facts, "machine-settings-left", leftSettings + "the host could not open the file.");
    facts.lastLoadWritten = 999; // of an earlier request
    EXPECT_EQ(findProblems(facts)[0].name, "request-pending");
    facts = factsWithARequest();
    facts.sentRequests.clear();
    facts.hosts.push_back(facts.hosts[0]);
    expectOnly(facts, "machine-settings-left", leftSettings + "its host is not known.");
}

TEST(Problems, excludeALoadInProgress)
{
    Facts facts = factsWithARequest();
    facts.loads = {{"C:\\a.mcam", 1, ""}};
    facts.lastLoadWritten = 1001;
    facts.hosts[0].isAnswering = false;
    EXPECT_EQ(findProblems(facts).size(), 1u);
    EXPECT_EQ(findProblems(facts)[0].name, "host-not-answering");
    facts = factsWithARequest();
    facts.commandFiles[0].content = "\xEF\xBB\xBF"
                                    "17 C:\\a.mcam\n";
    EXPECT_TRUE(findProblems(facts).empty());
}

TEST(Problems, includeAHostWithoutAddIn)
{
    Facts facts = soundFacts();
    facts.hostsWithoutAddIn = {{4715, L"C:\\Mastercam\\Mastercam.exe"}};
    const std::string host = "The host with process 4715 (C:\\Mastercam\\Mastercam.exe)";
    expectOnly(facts, "add-in-missing", host + " has not loaded the add-in.");
    facts.hostsWithoutAddIn[0].addIn = L"C:\\torvapdm.dll";
    expectOnly(facts, "add-in-missing",
               host + " has loaded the add-in C:\\torvapdm.dll, but has not opened it.");
    facts.hostsWithoutAddIn[0].areModulesKnown = false;
    expectOnly(facts, "add-in-missing",
               host + " shows no add-in; zemlink may not look into the process.");
}

TEST(Problems, includeAnAddInFromElsewhere)
{
    Facts facts = soundFacts();
    facts.hosts[0].program = L"C:\\Mastercam\\Mastercam.exe";
    facts.hosts.push_back(facts.hosts[0]);
    facts.hosts[1].process = 4715;
    facts.commandFiles.push_back(facts.commandFiles[0]);
    facts.commandFiles[1].process = 4715;
    EXPECT_TRUE(findProblems(facts).empty());
    facts.hosts[1].addIn = L"D:\\torvapdm.dll";
    const std::string what = "The host with process 4715 has loaded D:\\torvapdm.dll, not "
                             "C:\\Mastercam\\chooks\\torvapdm.dll.";
    expectOnly(facts, "add-in-elsewhere", what);
    facts.setup = SetupEntry{L"C:\\Mastercam"};
    expectOnly(facts, "add-in-elsewhere", what);
    facts.hosts[1].program = L"D:\\Mastercam\\Mastercam.exe"; // with its own copy
    EXPECT_TRUE(findProblems(facts).empty());
}

TEST(Problems, includeASetupWhoseFilesAreGone)
{
    Facts facts = soundFacts();
    facts.setup = SetupEntry{L"C:\\Mastercam"};
    EXPECT_TRUE(findProblems(facts).empty());
    facts.setup->addInFound = denied;
    expectOnly(facts, "add-in-not-installed",
               "The add-in that setup installed, C:\\Mastercam\\chooks\\torvapdm.dll: " +
                   denied.text);
    facts.setup->hostFolderFound = denied;
    expectOnly(facts, "host-folder-missing",
               "Setup installed the add-in in the host's folder C:\\Mastercam: " + denied.text);
}

TEST(Problems, includePathsThatOthersMayWrite)
{
    Facts facts = soundFacts();
    facts.openPaths = {{L"C:\\TORVA\\ZEM", {L"Everyone", L"Users"}}, {L"C:\\x", {L"Guests"}}};
    expectOnly(
        facts, "writable-by-others",
        "Other accounts may write to C:\\TORVA\\ZEM (Everyone, Users), C:\\x (Guests): they "
        "can open files in the host and overwrite them, or replace the Companion or the add-in.");
}

TEST(Problems, includeWorkingCopiesOutsideAscii)
{
    Facts facts = soundFacts();
    facts.workingCopies = {L"C:\\a.mcam", L"C:\\\u00C4.mcam"};
    expectOnly(facts, "copy-not-ascii",
               "The path of the working copy C:\\\xC3\x84.mcam is not plain ASCII: no request can "
               "open it.");
}

TEST(Problems, includeARefusedCommit)
{
    Facts facts = soundFacts();
    facts.hasCompanionLog = true;
    facts.refusedCommits = {{"2026-11-21 10:11:12.345", "C:\\a.mcam"}};
    expectOnly(facts, "commit-refused",
               "The commit of C:\\a.mcam was refused on 2026-11-21 10:11:12.345: the running "
               "Companion did not answer.");
}

TEST(Doctor, listsWhatIsFine)
{
    Facts facts = soundFacts();
    EXPECT_EQ(doctorOutcome(facts, false).report.dump(), R"({"problems":[]})");
    const Report all = doctorOutcome(facts, true).report;
    EXPECT_EQ(all["fine"].size(), findFine(facts).size());
    EXPECT_EQ(all["fine"][0], "The installation folder exists.");
    const std::vector<std::string> before = findFine(facts);
    facts.folderFound = denied;
    facts.hosts.clear();
    facts.settings.reset();
    const std::vector<std::string> after = findFine(facts);
    for (const char* check : {"The installation folder exists.", "Every host answers messages.",
                              "Every line of the settings has an end."}) {
        EXPECT_EQ(std::count(before.begin(), before.end(), check), 1) << check;
        EXPECT_EQ(std::count(after.begin(), after.end(), check), 0) << check;
    }
}

TEST(Doctor, setsTheExitCode)
{
    Facts facts = soundFacts();
    EXPECT_EQ(doctorOutcome(facts, true).exitCode, 0);
    facts.hasCompanionLog = true;
    facts.refusedCommits = {{"then", "C:\\a.mcam"}};
    const Outcome outcome = doctorOutcome(facts, false);
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.report.dump(),
              R"({"problems":[{"name":"commit-refused","what":"The commit of C:\\a.mcam was )"
              R"(refused on then: the running Companion did not answer.",)"
              R"("do":"Save the file to the Companion again in the host."}]})");
}
