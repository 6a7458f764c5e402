// `zemlink watch` next to the stand-in Companion, the stand-in host and the shipped add-in.
#include "endtoend/companion_commit_fixture.h"
#include "support/companion_double.h"
#include "support/host_program.h"
#include "support/sockets.h"
#include "tools/zemlink/reports/report.h"
#include "zemlink/announced_host.h"
#include "zemlink/own_console.h"
#include "zemlink/tool_run.h"

#include <gtest/gtest.h>

using namespace testing_support;
using zemlink::Report;
using Words = std::vector<std::string>;

namespace {

class ZemlinkWatch : public CommitFixture {
protected:
    // Whole lines so far; the first ones are not events.
    static std::vector<Report> eventsIn(const ToolRun& run)
    {
        std::vector<Report> events;
        const std::string output = run.output();
        for (size_t start = 0, end; (end = output.find('\n', start)) != output.npos;
             start = end + 1) {
            const Report line = Report::parse(output.substr(start, end - start), nullptr, false);
            if (line.contains("event"))
                events.push_back(line);
        }
        return events;
    }
    static Words wordsIn(const ToolRun& run)
    {
        Words words;
        for (const Report& event : eventsIn(run))
            words.push_back(event["event"]);
        return words;
    }
    static size_t countIn(const ToolRun& run, const std::string& word)
    {
        const Words words = wordsIn(run);
        return static_cast<size_t>(std::ranges::count(words, word));
    }
    static bool waitForEvents(const ToolRun& run, const std::string& word, size_t times = 1)
    {
        return waitUntil([&] { return countIn(run, word) >= times; });
    }
    static bool isReady(const HostProgram& host)
    {
        return waitUntil([&] { return host.window() != nullptr; }) && host.waitForCommandFile();
    }
    static bool isWatching(const ToolRun& run) { return run.waitForOutput("watching"); }
};

// Notices come at any time after their commit, and the Companion moves the picture away at once.
Words withoutNoticesAndPictures(Words words)
{
    std::erase(words, "notice");
    std::erase(words, "picture-written");
    return words;
}

} // namespace

TEST_F(ZemlinkWatch, showsASessionInItsOrder)
{
    const ToolRun run(installation, L"watch --json --timeout 600");
    ASSERT_TRUE(isWatching(run)) << run.errors();
    const CompanionProgram companion(installation);
    ASSERT_TRUE(waitForEvents(run, "companion-started"));
    const HostProgram host(installation, "set main_window_enabled false\n"
                                         "show main_window_enabled\n"
                                         "wait-for CFile_DoFileSave( 60000\ncall m_save 0\n");
    ASSERT_TRUE(isReady(host) && waitForEvents(run, "host-started"));
    ASSERT_TRUE(host.waitForTrace(LR"(main_window_enabled = "false")"));
    ASSERT_EQ(companion.run(L"--send bracket"), carriedOut);
    ASSERT_TRUE(waitForEvents(run, "request-taken"));
    EnableWindow(host.window(), TRUE); // the load waits for it
    ASSERT_TRUE(waitForVersion(companion, L"bracket", 2));
    ASSERT_TRUE(waitForEvents(run, "commit-taken") && waitForEvents(run, "notice"));
    PostMessageW(host.window(), WM_CLOSE, 0, 0);
    ASSERT_TRUE(waitForEvents(run, "host-ended"));
    EXPECT_EQ(companion.run(L"--quit"), carriedOut);
    ASSERT_TRUE(waitForEvents(run, "companion-ended"));

    EXPECT_EQ(
        withoutNoticesAndPictures(wordsIn(run)),
        (Words{"companion-started", "host-started", "machine-settings-written", "request-written",
               "request-taken", "load-step", "load-step", "machine-settings-taken", "load-step",
               "load-step", "load-step", "load-step", "load-step", "commit-written", "commit-taken",
               "host-ended", "companion-ended"}));
    const std::string file = toUtf8(installation.path(L"work\\bracket.mcam"));
    for (const Report& event : eventsIn(run)) {
        const std::string word = event["event"];
        EXPECT_FALSE(event.contains("presentAtStart")) << event;
        if (word == "companion-started")
            EXPECT_EQ(event["process"], companion.process().id());
        if (word == "request-written" || word == "request-taken") {
            EXPECT_EQ(event["process"], host.process().id());
            EXPECT_EQ(event["meaning"], (Report{{"request", "open"}, {"id", 17}, {"path", file}}));
        } else if (word == "commit-written" || word == "commit-taken") {
            EXPECT_EQ(event["process"], companion.process().id());
            EXPECT_EQ(event["meaning"], (Report{{"id", 17}, {"file", file}}));
        } else if (word == "notice") {
            EXPECT_EQ(event["meaning"], (Report{{"notice", "commit"}, {"id", 17}, {"file", file}}));
        } else if (word == "load-step") {
            EXPECT_EQ(event["process"], host.process().id());
        }
    }
}

TEST_F(ZemlinkWatch, showsAPictureBeforeItsCommit)
{
    CompanionDouble companion;
    companion.holdSemaphore();
    companion.showWindow();
    const std::wstring part = makePart(L"a.mcam", "");
    const ToolRun run(installation,
                      L"watch --json --only picture-written,commit-written --count 2");
    ASSERT_TRUE(isWatching(run));
    const HostProgram host(installation, "set geo_filename " + toUtf8(part) + "\ncall m_save 0\n");
    EXPECT_EQ(run.waitForExit(), 0u);
    ASSERT_EQ(wordsIn(run), (Words{"picture-written", "commit-written"}));
    EXPECT_EQ(eventsIn(run)[0]["meaning"]["bitsPerPixel"], 24);
    EXPECT_EQ(eventsIn(run)[1]["meaning"], (Report{{"id", 0}, {"file", toUtf8(part)}}));
}

TEST_F(ZemlinkWatch, showsTheQueueOfTheAddIn)
{
    CompanionDouble companion; // the Companion removes a queue as soon as it has read it
    companion.holdSemaphore();
    const std::wstring part = installation.path(L"queue.mcam");
    writeBytes(part, "mastercam part 1\n\n[group]\nid = 1\nname = Mill\n\n"
                     "[operation]\nid = 1\ngroup = 1\nnci-name = PLATE\n\n");
    writeBytes(installation.path(L"tmp\\PLATE.NC"), "%\nO1\nM30\n%\n");
    const ToolRun run(installation, L"watch --json --only nc-queue-written --count 1");
    ASSERT_TRUE(isWatching(run));
    const HostProgram host(installation, "set nc_prefix " + toUtf8(installation.path(L"tmp\\")) +
                                             "\nset nc_suffix .NC\npart " + toUtf8(part) +
                                             "\ncall importNCqueue\n");
    EXPECT_EQ(run.waitForExit(), 0u);
    ASSERT_EQ(wordsIn(run), (Words{"nc-queue-written"}));
    const Report event = eventsIn(run)[0];
    EXPECT_EQ(event["file"], toUtf8(installation.path(L"temp\\ncqueue-0.txt")));
    EXPECT_EQ(event["meaning"]["programs"][0]["group"], "Mill");
}

TEST_F(ZemlinkWatch, showsNcQueuesToolDataAndAnswers)
{
    const ToolRun run(installation, L"watch --json --count 3 --only "
                                    L"nc-queue-written,tool-data-written,answer-written");
    ASSERT_TRUE(isWatching(run));
    writeBytes(installation.path(L"temp\\ncqueue-17.txt"), "NCPATH|3|C:\\A.NC|g\r\n");
    ASSERT_TRUE(waitForEvents(run, "nc-queue-written"));
    writeBytes(installation.path(L"temp\\tool-17.txt"), "TOOLDATA|x\r\n");
    ASSERT_TRUE(waitForEvents(run, "tool-data-written"));
    const std::wstring answer = std::filesystem::temp_directory_path() / L"TORVA ZEM-65535.tmp";
    writeBytes(answer, std::string("C\0A\0D\0001\0 \0x\0", 12));
    EXPECT_EQ(run.waitForExit(), 0u);
    DeleteFileW(answer.c_str());
    EXPECT_EQ(wordsIn(run), (Words{"nc-queue-written", "tool-data-written", "answer-written"}));
}

TEST_F(ZemlinkWatch, marksWhatIsPresentAtTheStart)
{
    const AnnouncedHost host;
    const std::wstring file = AnnouncedHost::makeCommandFile(installation);
    writeBytes(installation.path(L"temp\\mcsettings-17.txt"), "17|3|0|C:\\Mill\r\n");
    writeBytes(file, "CHECKIN a.mcam");
    appendCommit(commitFile(4294967288), formatCommitRecord(3, L"C:\\a.mcam"));
    const ToolRun run(installation, L"watch --json --timeout 2");
    ASSERT_TRUE(isWatching(run));
    ASSERT_TRUE(waitForEvents(run, "commit-written"));
    EXPECT_EQ(run.waitForExit(), 0u);
    EXPECT_EQ(wordsIn(run), (Words{"host-started", "machine-settings-written", "request-written",
                                   "commit-written"}));
    for (const Report& event : eventsIn(run))
        EXPECT_EQ(event.value("presentAtStart", false), true) << event;
    EXPECT_EQ(readBytes(file), "CHECKIN a.mcam");
}

TEST_F(ZemlinkWatch, reportsAWaitingRequestTakenLater)
{
    const AnnouncedHost host;
    const std::wstring file = AnnouncedHost::makeCommandFile(installation);
    writeBytes(file, "CHECKIN a.mcam");
    const ToolRun run(installation, L"watch --json --timeout 600");
    ASSERT_TRUE(waitForEvents(run, "request-written"));
    EXPECT_EQ(countIn(run, "request-taken"), 0u);
    writeBytes(file, "");
    ASSERT_TRUE(waitForEvents(run, "request-taken"));
    EXPECT_EQ(eventsIn(run).back()["meaning"],
              (Report{{"request", "check-in"}, {"name", "a.mcam"}}));
}

TEST_F(ZemlinkWatch, disturbsNoRequest)
{
    constexpr size_t requests = 50;
    const ToolRun run(installation, L"watch --json --timeout 600");
    ASSERT_TRUE(isWatching(run));
    const CompanionProgram companion(installation);
    const HostProgram host(installation, "");
    ASSERT_TRUE(isReady(host) && waitForEvents(run, "host-started"));
    for (size_t i = 1; i <= requests; ++i)
        ASSERT_EQ(companion.run(L"--new-file --id " + std::to_wstring(i)), carriedOut);
    ASSERT_TRUE(companion.waitForLog(L"taken ", requests));
    EXPECT_EQ(companion.count(L"lost "), 0u);
    EXPECT_TRUE(host.waitForTrace(L"OnFileNew", requests));
    EXPECT_TRUE(waitForEvents(run, "request-taken", requests));
    // On a busy computer a request may be shown without content, or twice.
    size_t lastId = 0;
    for (const Report& event : eventsIn(run)) {
        if (event["event"] == "request-written" && event.contains("meaning")) {
            EXPECT_GE(event["meaning"]["id"].get<size_t>(), lastId);
            lastId = event["meaning"]["id"];
        }
    }
    EXPECT_NE(lastId, 0u);
}

TEST_F(ZemlinkWatch, survivesATruncatedLogAndAnIncompleteRecord)
{
    const std::wstring log = installation.path(L"sys\\mcxlog.txt");
    writeBytes(log, "Loading File #1: C:\\old.mcam\r\nLoading File #2: C:\\old.mcam\r\n");
    const ToolRun run(installation, L"watch --json --timeout 600");
    ASSERT_TRUE(isWatching(run));
    writeBytes(log, "Loading File #1: C:\\new.mcam\r\n");
    ASSERT_TRUE(waitForEvents(run, "load-step"));
    const std::string record = formatCommitRecord(3, L"C:\\a.mcam");
    appendCommit(commitFile(4294967288), record.substr(0, 12));
    peer::appendToFile(log, "Loading File #2: C:\\new.mcam\r\nLoading");
    ASSERT_TRUE(waitForEvents(run, "load-step", 2));
    EXPECT_EQ(countIn(run, "commit-written"), 0u);
    peer::appendToFile(commitFile(4294967288), record.substr(12));
    ASSERT_TRUE(waitForEvents(run, "commit-written"));
    DeleteFileW(commitFile(4294967288).c_str());
    ASSERT_TRUE(waitForEvents(run, "commit-taken"));
    EXPECT_EQ(wordsIn(run), (Words{"load-step", "load-step", "commit-written", "commit-taken"}));
    EXPECT_EQ(eventsIn(run)[0]["meaning"]["file"], "C:\\new.mcam");
}

TEST_F(ZemlinkWatch, findsAFolderThatIsCreatedLater)
{
    ASSERT_TRUE(RemoveDirectoryW(installation.path(L"temp").c_str()));
    const ToolRun run(installation, L"watch --timeout 600");
    ASSERT_TRUE(run.waitForOutput("remark: " + toUtf8(installation.path(L"temp")) +
                                  " does not exist; it is watched once it does.\n"));
    CreateDirectoryW(installation.path(L"temp").c_str(), nullptr);
    writeBytes(installation.path(L"temp\\mcsettings-17.txt"), "17|3|0|C:\\Mill\r\n");
    EXPECT_TRUE(run.waitForOutput("host <- Companion         machine settings: id 17 "));
}

TEST_F(ZemlinkWatch, needsTheInstallationFolder)
{
    registerInstallation(installation.path(L"nowhere"));
    const ToolResult result = runTool(installation, L"watch --timeout 600");
    EXPECT_EQ(result.exitCode, 1u);
    EXPECT_EQ(result.errors,
              "zemlink: there is no folder " + toUtf8(installation.path(L"nowhere")) + "\n");
}

TEST_F(ZemlinkWatch, startsWithThePastFromTheLog)
{
    writeBytes(installation.path(L"sys\\companion.log"),
               "2026-01-02 03:04:05.006 line bytes=7 hex=544F4F4C2D310A text=\"TOOL-1\"\n"
               "2026-01-02 03:04:06.006 line bytes=7 hex=544F4F4C2D320A text=\"TOOL-2\"\n");
    const ToolResult result =
        runTool(installation, L"watch --count 1 --timeout 600 --since \"2026-01-02 03:04:06\"");
    EXPECT_EQ(result.exitCode, 0u) << result.errors;
    EXPECT_EQ(result.output, "watching " + toUtf8(installation.root()) +
                                 "\n2026-01-02 03:04:06.006  from the log: host -> Companion       "
                                 "  notice: tool data id 2\n");
}

TEST_F(ZemlinkWatch, endsWithAWholeLineAtCtrlC)
{
    const OwnConsole console;
    const ToolRun run(installation, L"watch --json");
    ASSERT_TRUE(isWatching(run)) << run.errors();
    console.pressCtrlC();
    EXPECT_EQ(run.waitForExit(), 0u);
    EXPECT_TRUE(run.output().ends_with("}\n"));
    EXPECT_EQ(run.errors(), "");
}

TEST_F(ZemlinkWatch, reportsThatNoticesNeedTheLog)
{
    const ToolResult result = runTool(installation, L"watch --timeout 1");
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_EQ(result.output,
              "watching " + toUtf8(installation.root()) +
                  "\nremark: " + toUtf8(installation.path(L"sys\\companion.log")) +
                  " does not exist; notices cannot be seen without the Companion's log.\n");
    EXPECT_EQ(runTool(installation, L"watch --count 1 --timeout 1").exitCode, 1u);
    CompanionDouble companion;
    companion.showWindow();
    writeBytes(installation.path(L"sys\\companion.log"),
               "2026-11-21 10:11:12.345 started folder=\"C:\\ZEM\" pid=1\n");
    const std::string output = runTool(installation, L"watch --timeout 1").output;
    EXPECT_NE(output.find(" is not the running Companion's; notices cannot be seen"),
              std::string::npos)
        << output;
    writeBytes(installation.path(L"sys\\companion.log"),
               "2026-11-21 10:11:12.345 started folder=\"C:\\ZEM\" pid=" +
                   std::to_string(GetCurrentProcessId()) + "\n");
    EXPECT_EQ(runTool(installation, L"watch --timeout 1").output.find("remark"), std::string::npos);
}

TEST_F(ZemlinkWatch, failsAtCtrlCBeforeItsCount)
{
    for (const auto& [options, exitCode] : {std::pair{L"", 0u}, {L" --count 100", 1u}}) {
        const OwnConsole console;
        const ToolRun run(installation, std::wstring(L"watch --json") + options);
        ASSERT_TRUE(isWatching(run)) << run.errors();
        console.pressCtrlC();
        EXPECT_EQ(run.waitForExit(), exitCode) << toUtf8(options);
    }
}
