// The text of `zemlink status`.
#include "tools/zemlink/reports/report.h"
#include "tools/zemlink/reports/status.h"
#include "zemlink/facts_fixture.h"

#include <gtest/gtest.h>

using namespace zemlink;
using namespace testing_support;

TEST(StatusReport, showsEverythingThatRuns)
{
    Facts facts = soundFacts();
    facts.hosts.push_back({4712, L"Mastercam"});
    facts.commitFiles = {{L"C:\\TORVA\\ZEM\\temp\\torvapdm-12.dat", 12, true, 84,
                          std::string("\x2A\0\0\0\3\0\0\0a\0b\0c\0\1\0", 16), true},
                         {L"C:\\TORVA\\ZEM\\temp\\torvapdm-13.dat", 13, false, 0, {}, true}};
    EXPECT_EQ(asText(statusReport(facts)), R"(zemlink: 1.0.0
installation:
  folder: C:\TORVA\ZEM
  from: registry value
  exists: yes
settings:
  file: yes
  UseFtpServer: yes
  AlwaysSaveTools: no
  MCXCATIA: no
  MCXIMPORTNC: yes
companion:
  running: yes
  window: TORVA ZEM
  process: 12
  program: C:\TORVA\ZEM\TORVA-ZEM.exe
  version: 1.2.3
hosts:
  - process: 4711
    title: bracket.mcam
    answers: yes
    program: C:\Mastercam\Mastercam.exe
    version: 26.0.1
    add in:
      path: C:\Mastercam\chooks\torvapdm.dll
      version: 1.0.0
    command file:
      path: C:\TORVA\ZEM\temp\mastercam-4711.dat
      bytes: 0
    requests waiting: none
  - process: 4712
    title: Mastercam
    answers: yes
    program: none
    version: none
    add in: none
    command file: none
    requests waiting: none
commits waiting:
  - file: C:\TORVA\ZEM\temp\torvapdm-12.dat
    process running: yes
    records:
      - at: 84
        id: 42
        file: abc
    incomplete: 2
  - file: C:\TORVA\ZEM\temp\torvapdm-13.dat
    process running: no
    being written: yes
port:
  number: 4559
  answers: yes
  owner: the Companion
  process: 12
  program: C:\TORVA\ZEM\TORVA-ZEM.exe
)");
}

TEST(StatusReport, showsWhyNothingAnswers)
{
    Facts facts;
    facts.folderFound = {2, "File not found. (error 2)"};
    facts.port.answer = {10061, "Connection refused. (error 10061)"};
    EXPECT_EQ(statusReport(facts)["port"].dump(),
              R"~({"number":4559,"answers":false,"cause":"Connection refused. (error 10061)"})~");
    EXPECT_EQ(statusReport(facts)["installation"].dump(),
              R"({"folder":"C:\\TORVA\\ZEM","from":"default, no registry value",)"
              R"("exists":false})");
    EXPECT_EQ(statusReport(facts)["settings"].dump(),
              R"({"file":false,"noFile":"There is no settings file; the defaults apply.",)"
              R"("defaults":{"UseFtpServer":false,"AlwaysSaveTools":false,"MCXCATIA":false,)"
              R"("MCXIMPORTNC":true}})");
}

TEST(StatusReport, namesTheOwnerOfThePort)
{
    Facts facts = soundFacts();
    const auto owner = [&] { return statusReport(facts)["port"].value("owner", ""); };
    EXPECT_EQ(owner(), "the Companion");
    facts.port.holder = 99; // the Companion of another user
    EXPECT_EQ(owner(), "another program");
    facts.companion.process.reset();     // it has no window
    EXPECT_EQ(owner(), "the Companion"); // by its program
    facts.port.program = L"C:\\Other\\server.exe";
    EXPECT_EQ(owner(), "another program");
    facts.companion.process = 12;
    facts.port.holder.reset();
    EXPECT_EQ(owner(), "unknown, since the system does not report it");
    EXPECT_EQ(statusReport(facts)["port"]["answers"], "unknown");
    facts.companion.hasPort = true;
    EXPECT_EQ(owner(), "the Companion, by its log");
    facts.companion.hasPort = false;
    EXPECT_EQ(owner(), "another program, by the Companion's log");
    facts.companion = {};
    EXPECT_EQ(owner(), "another program");
    facts.port.answer.code = 10061;
    EXPECT_EQ(owner(), "");
}

TEST(StatusReport, showsWhatWaitsInEachHost)
{
    Facts facts = soundFacts();
    facts.hosts.push_back({4712, L"Mastercam"});
    facts.commandFiles[0].content = "\xEF\xBB\xBF"
                                    "18 C:\\b.mcam\n";
    facts.commandFiles[0].bytes = facts.commandFiles[0].content.size();
    facts.sentRequests = {{17, 4712, "C:\\a.mcam"}};
    facts.machineSettings = {{L"C:\\17.txt", 17, 1000}, {L"C:\\18.txt", 18, 1001}};
    const Report hosts = statusReport(facts)["hosts"];
    EXPECT_EQ(hosts[0]["commandFile"]["content"].dump(),
              R"({"request":"open","id":18,"path":"C:\\b.mcam"})");
    EXPECT_EQ(hosts[0]["requestsWaiting"].dump(),
              R"([{"id":18,"state":"not taken yet","machineSettings":"C:\\18.txt"}])");
    EXPECT_EQ(hosts[1]["requestsWaiting"].dump(),
              R"([{"id":17,"state":"taken, waits until the host is ready",)"
              R"("file":"C:\\a.mcam","machineSettings":"C:\\17.txt"}])");
}

TEST(StatusReport, omitsCommitFilesWithoutCommits)
{
    Facts facts = soundFacts();
    facts.commitFiles = {{L"C:\\TORVA\\ZEM\\temp\\torvapdm-12.dat", 12, true, 0, ""},
                         {L"C:\\TORVA\\ZEM\\temp\\torvapdm-13.dat", 13, false, 84, ""}};
    EXPECT_EQ(statusReport(facts)["commitsWaiting"].dump(), "[]");
}

TEST(StatusReport, showsWhatIsUnknownWithoutABookmark)
{
    Facts facts = soundFacts();
    facts.commitFiles = {{L"C:\\a.dat", 12, true, 0, std::string("\1\0\0\0\1\0\0\0a\0", 10)}};
    EXPECT_EQ(statusReport(facts)["commitsWaiting"].dump(),
              R"([{"file":"C:\\a.dat","processRunning":true,)"
              R"("noBookmark":"It is unknown which of these commits have been taken.",)"
              R"("records":[{"at":0,"id":1,"file":"a"}]}])");
    facts.commitFiles[0].hasBookmark = true;
    EXPECT_FALSE(statusReport(facts)["commitsWaiting"][0].contains("noBookmark"));
}
