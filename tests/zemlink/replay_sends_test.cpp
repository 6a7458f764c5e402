// What `zemlink replay` sends, and to whom.
#include "peer/installation_folder.h"
#include "peer/running_programs.h"
#include "support/bytes.h"
#include "support/installation.h"
#include "support/sockets.h"
#include "support/waiting.h"
#include "tools/zemlink/reports/report.h"
#include "tools/zemlink/session/recording.h"
#include "zemlink/announced_host.h"
#include "zemlink/own_console.h"
#include "zemlink/tool_run.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace testing_support;
using zemlink::EventKind;
using zemlink::ExchangeEvent;
using zemlink::Recording;
using zemlink::Report;

namespace {

// The test process is the host; no add-in takes the requests.
class ReplaySends : public ::testing::Test {
protected:
    // `at`: milliseconds after the start.
    void add(std::int64_t at, EventKind kind, std::uint32_t process, const std::wstring& file,
             const std::string& bytes = "")
    {
        recording.events.push_back({recording.startedAt + at, kind, process, file, bytes});
    }
    void addRequest(std::int64_t at, std::uint32_t process, const std::string& bytes)
    {
        add(at, EventKind::requestWritten, process, installation.commandFile(process), bytes);
    }
    void addTaken(std::int64_t at, std::uint32_t process, const std::string& bytes)
    {
        add(at, EventKind::requestTaken, process, installation.commandFile(process), bytes);
    }
    std::wstring settingsFile(int id) const
    {
        return installation.path(L"temp\\mcsettings-" + std::to_wstring(id) + L".txt");
    }
    std::wstring arguments(const std::wstring& options) const
    {
        zemlink::writeRecording(installation.path(L"a.zip"), recording);
        return L"replay " + quoted(installation.path(L"a.zip")) + L" --at-once --json" + options;
    }
    std::wstring toThisHost() const { return L" --host " + std::to_wstring(GetCurrentProcessId()); }
    bool waitForRequest(const std::string& bytes) const
    {
        return waitUntil([&] { return readBytes(commandFile) == bytes; });
    }

    Installation installation{Registry::ofTheUser};
    const AnnouncedHost host;
    const std::wstring commandFile = AnnouncedHost::makeCommandFile(installation);
    Recording recording = [this] {
        Recording made{1795000000123};
        made.folder = installation.root();
        return made;
    }();
};

} // namespace

TEST_F(ReplaySends, nothingAfterCtrlC)
{
    addRequest(1, 4711, "CHECKIN a.mcam");
    addTaken(2, 4711, "CHECKIN a.mcam");
    add(3, EventKind::notice, 4711, L"", "TOOL-1\n");
    addRequest(4, 4711, "CHECKIN b.mcam");
    add(5, EventKind::notice, 4711, L"", "TOOL-2\n");
    const OwnConsole console;
    const ToolRun run(installation, arguments(L""));
    ASSERT_TRUE(waitForRequest("CHECKIN a.mcam")) << run.errors();
    writeBytes(commandFile, ""); // taken; the notice does not come
    console.pressCtrlC();
    EXPECT_EQ(run.waitForExit(), 1u);
    EXPECT_EQ(readBytes(commandFile), "");
    const Report report = Report::parse(run.output());
    EXPECT_EQ(report["interrupted"], true);
    EXPECT_EQ(report["carriedOut"], 1);
    EXPECT_EQ(report["failures"], Report::array());
    EXPECT_EQ(report["compared"], 2) << "without what comes after the second request";
}

TEST_F(ReplaySends, onlyWhatTheNamedHostGot)
{
    add(1, EventKind::machineSettingsWritten, 4711, settingsFile(1), "1|3");
    addRequest(2, 4711, "CHECKIN a.mcam");
    add(3, EventKind::machineSettingsWritten, 4715, settingsFile(2), "2|3");
    addRequest(4, 4715,
               "\xEF\xBB\xBF"
               "2 C:\\b.mcam\n");
    addTaken(5, 4715,
             "\xEF\xBB\xBF"
             "2 C:\\b.mcam\n");
    add(6, EventKind::machineSettingsWritten, 0, settingsFile(3), "3|3");
    addRequest(7, 4715,
               "\xEF\xBB\xBF"
               "3 C:\\c.mcam\n");
    addRequest(8, 4711, "CHECKIN d.mcam");
    const ToolRun run(installation, arguments(toThisHost() + L" --timeout 20"));
    ASSERT_TRUE(waitForRequest("CHECKIN a.mcam")) << run.errors();
    writeBytes(commandFile, "");
    EXPECT_TRUE(waitForRequest("CHECKIN d.mcam"));
    ASSERT_TRUE(run.waitForExit());
    const Report report = Report::parse(run.output());
    EXPECT_EQ(report["carriedOut"], 3);
    EXPECT_EQ(report["failures"], Report::array());
    EXPECT_EQ(report["compared"], 0);
    EXPECT_TRUE(std::filesystem::exists(settingsFile(1)));
    EXPECT_FALSE(std::filesystem::exists(settingsFile(2)));
    EXPECT_FALSE(std::filesystem::exists(settingsFile(3)));
}

// A folder that is made later is watched up to a second later, but the host is found at once.
TEST_F(ReplaySends, nothingToAHostNotYetObserved)
{
    addRequest(1, 4711, "CHECKIN a.mcam");
    addTaken(2, 4711, "CHECKIN a.mcam");
    std::filesystem::remove_all(installation.path(L"temp"));
    zemlink::writeRecording(installation.path(L"a.zip"), recording);
    const ToolRun run(installation, L"replay --at-once " + quoted(installation.path(L"a.zip")));
    ASSERT_TRUE(run.waitForOutput("replaying ")) << run.errors();
    std::filesystem::create_directory(installation.path(L"temp"));
    AnnouncedHost::makeCommandFile(installation);
    ASSERT_TRUE(waitForRequest("CHECKIN a.mcam")) << run.output();
    writeBytes(commandFile, ""); // taken
    EXPECT_EQ(run.waitForExit(), 0u) << run.output();
}

TEST_F(ReplaySends, noSettingsWithoutAHost)
{
    addRequest(1, 4711, "CHECKIN a.mcam");
    add(2, EventKind::machineSettingsWritten, 4715, settingsFile(2), "2|3");
    addRequest(3, 4715,
               "\xEF\xBB\xBF"
               "2 C:\\b.mcam\n");
    const ToolResult result = runTool(installation, arguments(L" --timeout 1"));
    EXPECT_EQ(result.exitCode, 1u);
    const std::string cause = ": no host is running for the recorded process 4715";
    EXPECT_EQ(Report::parse(result.output)["failures"],
              Report({"machine-settings-written" + cause, "request-written" + cause}));
    EXPECT_FALSE(std::filesystem::exists(settingsFile(2)));
}

TEST_F(ReplaySends, nothingWhileThePortIsInUse)
{
    const LineReceiver other;
    const ToolResult result = runTool(installation, arguments(L""));
    EXPECT_EQ(result.exitCode, 6u);
    EXPECT_NE(result.output.find("port 4559 cannot be opened: "), std::string::npos);
    EXPECT_NE(result.output.find("(error 100"), std::string::npos) << result.output;
    EXPECT_NE(result.output.find("; another program seems to use it"), std::string::npos)
        << result.output;
}
