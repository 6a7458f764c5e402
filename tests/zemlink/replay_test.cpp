// `zemlink replay` against the stand-in host with the add-in, and `zemlink report`.
#include "endtoend/companion_commit_fixture.h"
#include "peer/command_file.h"
#include "peer/running_programs.h"
#include "support/session_script.h"
#include "tools/zemlink/session/recorded_text.h"
#include "tools/zemlink/session/recording.h"
#include "tools/zemlink/session/running_recording.h"
#include "tools/zemlink/session/zip_file.h"
#include "zemlink/tool_run.h"

#include <algorithm>
#include <set>

using namespace testing_support;
using zemlink::EventKind;
using zemlink::ExchangeEvent;
using zemlink::Recording;
using zemlink::Report;

namespace {

namespace files = std::filesystem;

const std::wstring recordings = programFolder() + L"shipped\\recordings\\";

std::vector<std::wstring> recordingNames()
{
    std::vector<std::wstring> names;
    for (const auto& each : files::directory_iterator(recordings))
        if (each.path().extension() == L".zip")
            names.push_back(each.path().stem().native());
    std::ranges::sort(names);
    return names;
}

std::string scriptOf(const std::wstring& name)
{
    return readBytes(recordings + name + L".script").value_or("");
}

class Replay : public ::testing::TestWithParam<std::wstring> {
protected:
    Replay() { installCompanionWithLibrary(installation); }

    // Puts the parts that the recording opens into their places: the library's, or an empty one.
    void putParts(const Recording& recording) const
    {
        for (const ExchangeEvent& event :
             zemlink::relocated(recording, installation.root()).events) {
            if (event.kind != EventKind::requestWritten)
                continue;
            const peer::HostCommand request = peer::parseHostCommand(event.bytes);
            if (request.kind != peer::HostCommandKind::open)
                continue;
            const files::path part = peer::ansiToUtf8(request.path);
            files::create_directories(part.parent_path());
            writeBytes(
                part.native(),
                readBytes(installation.path(L"library\\" + part.stem().native() + L"\\v1.mcam"))
                    .value_or(""));
        }
    }

    // The report of the replay of this file against the hosts that run the script.
    Report replay(const std::wstring& file, const std::string& script, DWORD expectedExit,
                  const std::wstring& options = L"") const
    {
        const SessionFiles sessionFiles(installation, script);
        const ToolRun tool(installation,
                           L"replay " + quoted(file) + L" --at-once --json" + options);
        EXPECT_TRUE(waitUntil([&] { return findInstance() != nullptr; })) << tool.errors();
        const auto firstHost = startFirstHost(installation, script);
        const auto secondHost = startSecondHostAfter(*firstHost, script);
        EXPECT_EQ(tool.waitForExit(), expectedExit) << tool.output() << tool.errors();
        return Report::parse(tool.output());
    }

    // Hosts are paired in the order in which the replay finds them, so the second starts once the
    // first has a part of the replay.
    std::unique_ptr<HostProgram> startSecondHostAfter(const HostProgram& first,
                                                      const std::string& script) const
    {
        if (hasSecondHost(script))
            EXPECT_TRUE(first.waitForTrace(L"DoFileOpen("));
        return startSecondHost(installation, script);
    }

    // The window in place of the Companion's.
    static HWND findInstance() { return peer::findInstanceWindow(); }

    Installation installation{Registry::ofTheUser};
};

} // namespace

TEST_P(Replay, findsNoDifference)
{
    const std::wstring file = recordings + GetParam() + L".zip";
    const Recording recording = zemlink::readRecording(file);
    EXPECT_FALSE(recording.isRedacted);
    putParts(recording);
    const Report report = replay(file, scriptOf(GetParam()), 0);
    EXPECT_EQ(report["differences"], Report::array());
    EXPECT_EQ(report["failures"], Report::array());
    EXPECT_GT(report["compared"], 0);
    EXPECT_GT(report["carriedOut"], 0);
}

INSTANTIATE_TEST_SUITE_P(Recordings, Replay, ::testing::ValuesIn(recordingNames()),
                         [](const auto& info) {
                             std::string name = peer::toUtf8(info.param);
                             std::ranges::replace(name, '-', '_');
                             return name;
                         });

using ReplayedHost = Replay;

TEST_F(ReplayedHost, differsWhenItDoesSomethingElse)
{
    const std::wstring file = recordings + L"save-and-commit.zip";
    putParts(zemlink::readRecording(file));
    // The host saves nothing and imports NC programs instead.
    const Report report = replay(file, scriptOf(L"nc-programs"), 1, L" --timeout 10");
    std::vector<std::string> found;
    for (const Report& each : report["differences"]) {
        const Report& event = each.contains("recorded") ? each["recorded"] : each["seen"];
        found.push_back(each["difference"].get<std::string>() + ' ' +
                        event["event"].get<std::string>());
    }
    EXPECT_TRUE(std::ranges::count(found, "missing commit-written") == 1) << report.dump(1);
    EXPECT_TRUE(std::ranges::count(found, "missing picture-written") == 1) << report.dump(1);
    EXPECT_TRUE(std::ranges::count(found, "extra nc-queue-written") == 1) << report.dump(1);
}

TEST_F(ReplayedHost, isNotReplayedWhileTheCompanionRuns)
{
    const CompanionProgram companion(installation);
    companion.waitForWindow();
    const ToolResult result =
        runTool(installation, L"replay " + quoted(recordings + L"new-file.zip"));
    EXPECT_EQ(result.exitCode, 1u);
    EXPECT_NE(result.errors.find("the Companion is running"), std::string::npos) << result.errors;
}

TEST_F(ReplayedHost, doesNotGetACompanionThatStartsMeanwhile)
{
    const ToolRun tool(installation,
                       L"replay " + quoted(recordings + L"new-file.zip") + L" --json --timeout 60");
    ASSERT_TRUE(waitUntil([&] { return findInstance() != nullptr; })) << tool.errors();
    EXPECT_EQ(startCompanion(installation, L"--send bracket"), notCarriedOut);
    const HostProgram host(installation, scriptOf(L"new-file"));
    EXPECT_EQ(tool.waitForExit(), 0u) << tool.output() << tool.errors();
    EXPECT_EQ(Report::parse(tool.output())["refusedStarts"], 1);
}

TEST_F(ReplayedHost, isTheNamedOne)
{
    const ToolResult result = runTool(
        installation, L"replay " + quoted(recordings + L"new-file.zip") + L" --host 4294967292");
    EXPECT_EQ(result.exitCode, 3u);
    EXPECT_NE(result.errors.find("is not a running host"), std::string::npos) << result.errors;
}

TEST_F(ReplayedHost, isNotPlayedARedactedRecording)
{
    Recording recording = zemlink::readRecording(recordings + L"new-file.zip");
    recording.isRedacted = true;
    zemlink::writeRecording(installation.path(L"a.zip"), recording);
    const ToolResult result =
        runTool(installation, L"replay " + quoted(installation.path(L"a.zip")));
    EXPECT_EQ(result.exitCode, 1u);
    EXPECT_NE(result.errors.find("a redacted recording cannot be replayed"), std::string::npos);
}

TEST_F(ReplayedHost, getsOnlyMachineSettingsAndRequests)
{
    Recording recording = zemlink::readRecording(recordings + L"open-a-part.zip");
    const std::wstring live = installation.path(L"temp\\torvapdm-4294967292.dat");
    writeBytes(live, "commits");
    ExchangeEvent forged{recording.startedAt + 1, EventKind::machineSettingsWritten, 0, live,
                         "forged"};
    ExchangeEvent unknown{recording.startedAt + 2, EventKind::requestWritten, 0, live, ""};
    ExchangeEvent tooLong{recording.startedAt + 3, EventKind::requestWritten, 0, live,
                          std::string(0x10001, 'x')};
    recording.events = {forged, unknown, tooLong};
    zemlink::writeRecording(installation.path(L"a.zip"), recording);
    const ToolResult result =
        runTool(installation, L"replay " + quoted(installation.path(L"a.zip")) +
                                  L" --at-once --json --timeout 1");
    EXPECT_EQ(result.exitCode, 1u);
    const Report report = Report::parse(result.output);
    EXPECT_EQ(report["failures"],
              Report({"machine-settings-written: the recorded file is not one of machine settings",
                      "request-written: its content was not recorded",
                      "request-written: it is too long"}));
    EXPECT_EQ(readBytes(live), "commits");
}

TEST(Recordings, haveAScriptEach)
{
    size_t scripts = 0;
    for (const auto& each : files::directory_iterator(recordings)) {
        if (each.path().extension() != L".script")
            continue;
        ++scripts;
        EXPECT_TRUE(files::exists(files::path(each.path()).replace_extension(L".zip"))) << each;
    }
    EXPECT_GE(scripts, 13u);
}

TEST(Recordings, haveEveryKindOfEvent)
{
    std::set<EventKind> kinds;
    std::set<std::wstring> pictures;
    for (const std::wstring& name : recordingNames())
        for (const ExchangeEvent& event :
             zemlink::readRecording(recordings + name + L".zip").events) {
            kinds.insert(event.kind);
            if (event.kind == EventKind::pictureWritten)
                pictures.insert(files::path(event.file).filename().native());
        }
    for (int kind = 0; kind <= static_cast<int>(EventKind::notice); ++kind)
        EXPECT_TRUE(kinds.contains(EventKind{kind})) << zemlink::eventWord(EventKind{kind});
    EXPECT_EQ(pictures, (std::set<std::wstring>{L"screendump.bmp", L"toolimage-1.bmp"}));
}

TEST(SupportArchive, holdsWhatASupporterAsksFor)
{
    const Installation installation{Registry::ofTheUser};
    writeBytes(installation.path(L"sys\\companion.log"),
               "2026-11-21 10:11:12.345 check-out file=\"C:\\Parts\\Rocket.mcam\"\n"
               "2026-11-21 10:11:12.345 refused reason=\"the running program does not answer: "
               "--commit \"C:\\Parts\\Secret.mcam\" --id 17\"\n");
    writeBytes(installation.path(L"sys\\working-copies.txt"),
               "17 | 17 | C:\\Parts\\Sk\xC3\xA4rm.mcam\n");
    writeBytes(installation.path(L"sys\\Rocket.mcam"), "the content of a part");
    const auto archive = [&](const std::wstring& name, const std::wstring& options) {
        const std::wstring path =
            installation.path(L"..\\") +
            installation.root().substr(installation.root().find_last_of(L'\\') + 1) + name;
        const ToolResult result = runTool(installation, L"report " + quoted(path) + options);
        EXPECT_EQ(result.exitCode, 0u) << result.errors;
        const std::string bytes = readBytes(path).value_or("");
        DeleteFileW(path.c_str());
        return zemlink::parseZip(bytes);
    };
    std::vector<std::string> names;
    std::string everything;
    for (const zemlink::ZipEntry& entry : archive(L"-report.zip", L"")) {
        names.push_back(entry.name);
        everything += entry.bytes;
    }
    EXPECT_EQ(names, (std::vector<std::string>{"status.json", "doctor.json", "listing.json",
                                               "logs/companion.log"}));
    EXPECT_NE(everything.find("Rocket.mcam"), std::string::npos);
    EXPECT_EQ(everything.find("the content of a part"), std::string::npos);
    EXPECT_NE(everything.find("Sk\xC3\xA4rm"), std::string::npos) << "doctor names it";
    EXPECT_NE(everything.find("The commit of C:\\\\Parts\\\\Secret.mcam"), std::string::npos);
    for (const zemlink::ZipEntry& entry : archive(L"-redacted.zip", L" --redact")) {
        for (const char* name : {"Rocket", "Secret", "secret"})
            EXPECT_EQ(entry.bytes.find(name), std::string::npos) << entry.name;
        EXPECT_EQ(entry.bytes.find("Sk\xC3\xA4rm"), std::string::npos) << entry.name;
        if (entry.name == "listing.json")
            EXPECT_EQ(Report::parse(entry.bytes)["files"][0]["sha256"].get<std::string>().size(),
                      64u);
        EXPECT_EQ(
            entry.bytes.find(peer::toUtf8(files::path(installation.root()).filename().native())),
            std::string::npos)
            << entry.name;
    }
}

TEST(SupportArchive, isNotWrittenOverAFile)
{
    const Installation installation{Registry::ofTheUser};
    writeBytes(installation.path(L"a.zip"), "mine");
    const ToolResult result =
        runTool(installation, L"report " + quoted(installation.path(L"a.zip")));
    EXPECT_EQ(result.exitCode, 1u);
    EXPECT_EQ(readBytes(installation.path(L"a.zip")), "mine");
    writeBytes(installation.path(L"b.zip.new"), "mine");
    EXPECT_EQ(runTool(installation, L"report " + quoted(installation.path(L"b.zip"))).exitCode, 1u);
    EXPECT_EQ(readBytes(installation.path(L"b.zip.new")), "mine");
}

TEST(SupportArchive, leavesOutAnUnreadableRecordingUnderWay)
{
    const Installation installation{Registry::ofTheUser};
    const std::wstring recording = installation.path(L"session.zip");
    writeBytes(recording, "being written");
    const zemlink::RunningRecording running(recording);
    const std::wstring report = L"report --json " + quoted(installation.path(L"a.zip"));
    const ToolResult result = runTool(installation, report);
    EXPECT_EQ(result.exitCode, 0u) << result.output << result.errors;
    EXPECT_EQ(Report::parse(result.output)["recordingLeftOut"],
              peer::toUtf8(recording) + " is not a recording: it is not a zip file");
    EXPECT_FALSE(zemlink::parseZip(readBytes(installation.path(L"a.zip")).value_or("")).empty());
    EXPECT_EQ(runTool(installation, L"report " + quoted(installation.path(L"b.zip")) +
                                        L" --recording " + quoted(recording))
                  .exitCode,
              1u)
        << "the user has asked for it";
}
