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
         "host-not-answering", "The host with process 4711 does not answer messages."},
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

TEST(Problems, includeNonAsciiAndOtherViewFolders)
{
    Facts facts = soundFacts();
    facts.folder.path = L"C:\\W\u00E4rme";
    expectOnly(facts, "folder-not-ascii",
               "The installation folder C:\\W\xC3\xA4rme is not plain ASCII: requests to open a "
               "file in it fail, and settings and log may not be found.");
    facts = soundFacts();
    facts.folder.otherView = L"D:\\ZEM";
    expectOnly(facts, "registry-view",
               "The 64-bit view of the registry names D:\\ZEM, but hosts use "
               "C:\\TORVA\\ZEM.");
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
}

TEST(Problems, excludeTheCompanionsPort)
{
    Facts facts = soundFacts();
    facts.port.holder = 13;
    facts.port.program = L"D:\\ZEM\\torva-zem.EXE";
    EXPECT_TRUE(findProblems(facts).empty());
    facts.port = Port(); // the process is unknown
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
        "The Companion is running, but port 4559 does not answer: Connection refused. (error "
        "10061)");
    facts = soundFacts();
    facts.companion.process.reset();
    expectOnly(facts, "companion-without-window",
               "The Companion is running, but has no window that hosts can find.");
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

TEST(Problems, setTheExitCode)
{
    EXPECT_EQ(problemsOutcome({}).exitCode, 0);
    EXPECT_EQ(problemsOutcome({}).report.dump(), R"({"problems":[]})");
    const Outcome outcome = problemsOutcome({{"a", "b", "c"}});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.report.dump(), R"({"problems":[{"name":"a","what":"b","do":"c"}]})");
}
