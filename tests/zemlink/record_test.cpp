// `zemlink record` next to the stand-in Companion, the stand-in host and the shipped add-in.
#include "endtoend/companion_commit_fixture.h"
#include "support/host_program.h"
#include "tools/zemlink/session/recording.h"
#include "zemlink/announced_host.h"
#include "zemlink/own_console.h"
#include "zemlink/tool_run.h"

#include <gtest/gtest.h>

using namespace testing_support;
using zemlink::EventKind;

namespace {

class ZemlinkRecord : public CommitFixture {
protected:
    const std::wstring file = installation.path(L"session.zip");

    zemlink::Recording recording() const
    {
        try {
            return zemlink::readRecording(file);
        } catch (const std::exception&) {
            return {};
        }
    }
    // The events of this kind in the file, as far as it has been written.
    std::vector<zemlink::ExchangeEvent> events(EventKind kind) const
    {
        std::vector<zemlink::ExchangeEvent> found = recording().events;
        std::erase_if(found, [&](const auto& event) { return event.kind != kind; });
        return found;
    }
    bool isRecording() const
    {
        return waitUntil([&] { return recording().startedAt != 0; });
    }
};

} // namespace

TEST_F(ZemlinkRecord, keepsASessionWithItsBytes)
{
    const ToolRun run(installation, L"record --timeout 600 " + quoted(file));
    ASSERT_TRUE(isRecording()) << run.errors();
    const CompanionProgram companion(installation);
    const HostProgram host(installation, "wait-for CFile_DoFileSave( 60000\ncall m_save 0\n");
    ASSERT_TRUE(waitUntil([&] { return host.window() != nullptr; }) && host.waitForCommandFile());
    ASSERT_EQ(companion.run(L"--send bracket"), carriedOut);
    ASSERT_TRUE(waitForVersion(companion, L"bracket", 2));
    // Written again by itself, before it ends.
    ASSERT_TRUE(waitUntil([&] { return events(EventKind::commitTaken).size() == 1; }));
    EXPECT_FALSE(recording().isFinished);
    const zemlink::Recording found = recording();
    EXPECT_EQ(found.folder, installation.root());
    EXPECT_EQ(found.status["installation"]["folder"], toUtf8(installation.root()));
    const std::string work = toUtf8(installation.path(L"work\\bracket.mcam"));
    const auto requests = events(EventKind::requestWritten);
    ASSERT_EQ(requests.size(), 1u);
    EXPECT_EQ(requests[0].bytes, "\xEF\xBB\xBF"
                                 "17 " +
                                     work + "\n");
    EXPECT_EQ(requests[0].process, host.process().id());
    EXPECT_GE(requests[0].at, found.startedAt);
    EXPECT_EQ(events(EventKind::commitWritten).at(0).bytes,
              formatCommitRecord(17, installation.path(L"work\\bracket.mcam")));
    EXPECT_EQ(events(EventKind::loadStep).size(), 7u);
}

TEST_F(ZemlinkRecord, startsWithWhatIsPresent)
{
    const AnnouncedHost host;
    writeBytes(AnnouncedHost::makeCommandFile(installation), "CHECKIN a.mcam");
    const ToolResult result = runTool(installation, L"record --timeout 1 " + quoted(file));
    EXPECT_EQ(result.exitCode, 0u) << result.errors;
    EXPECT_EQ(result.output, "recording " + toUtf8(installation.root()) + " to " + toUtf8(file) +
                                 "\nfile: " + toUtf8(file) + "\nevents: 2\n");
    EXPECT_TRUE(recording().isFinished);
    ASSERT_EQ(events(EventKind::requestWritten).size(), 1u);
    EXPECT_EQ(events(EventKind::requestWritten)[0].at, recording().startedAt);
    EXPECT_EQ(events(EventKind::requestWritten)[0].bytes, "CHECKIN a.mcam");
}

TEST_F(ZemlinkRecord, writesItsEndAtCtrlC)
{
    const OwnConsole console;
    const ToolRun run(installation, L"record " + quoted(file));
    ASSERT_TRUE(isRecording()) << run.errors();
    EXPECT_FALSE(recording().isFinished);
    writeBytes(installation.path(L"temp\\mcsettings-17.txt"), "17|3|0|C:\\Mill\r\n");
    makePicture("BM, as far as it goes");
    ASSERT_TRUE(waitUntil([&] { return !events(EventKind::pictureWritten).empty(); }));
    console.pressCtrlC();
    EXPECT_EQ(run.waitForExit(), 0u);
    EXPECT_TRUE(recording().isFinished);
    EXPECT_EQ(events(EventKind::machineSettingsWritten).size(), 1u);
    EXPECT_EQ(events(EventKind::pictureWritten)[0].bytes, "BM, as far as it goes");
}

TEST_F(ZemlinkRecord, overwritesNothing)
{
    writeBytes(file, "mine");
    const ToolResult result = runTool(installation, L"record --timeout 1 " + quoted(file));
    EXPECT_EQ(result.exitCode, 1u);
    EXPECT_EQ(result.errors,
              "zemlink: " + toUtf8(file) +
                  ": this file exists already\nGive another name; nothing is overwritten.\n");
    EXPECT_EQ(readBytes(file), "mine");
}

TEST_F(ZemlinkRecord, overwritesNoFileOnItsWay)
{
    writeBytes(file + L".new", "mine");
    const ToolResult result = runTool(installation, L"record --timeout 1 --json " + quoted(file));
    EXPECT_EQ(result.exitCode, 1u);
    EXPECT_NE(result.output.find("file-exists"), std::string::npos) << result.output;
    EXPECT_NE(result.output.find("session.zip.new: "), std::string::npos) << result.output;
    EXPECT_EQ(readBytes(file + L".new"), "mine");
    EXPECT_FALSE(readBytes(file).has_value());
}

TEST_F(ZemlinkRecord, reportsAFileThatCannotBeWritten)
{
    const ToolResult result =
        runTool(installation, L"record --timeout 1 " + quoted(installation.path(L"no\\x.zip")));
    EXPECT_EQ(result.exitCode, 1u);
    EXPECT_EQ(result.errors,
              "zemlink: " + toUtf8(installation.path(L"no\\x.zip")) + " cannot be written\n");
}

TEST_F(ZemlinkRecord, toleratesAnotherReaderOfItsFile)
{
    const ToolRun run(installation, L"record --timeout 12 " + quoted(file));
    ASSERT_TRUE(isRecording()) << run.errors();
    peer::OwnHandle reader = peer::ownFile(CreateFileW(file.c_str(), GENERIC_READ, FILE_SHARE_READ,
                                                       nullptr, OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(reader);
    makePicture("BM, as far as it goes");
    constexpr DWORD untilItsEndMs = 13000; // after a write under way and the first write of its end
    Sleep(untilItsEndMs);
    reader.reset();
    EXPECT_EQ(run.waitForExit(), 0u) << run.errors();
    EXPECT_TRUE(recording().isFinished);
    EXPECT_EQ(events(EventKind::pictureWritten).size(), 1u);
}

TEST_F(ZemlinkRecord, leavesOnlyItsFile)
{
    runTool(installation, L"record --timeout 1 " + quoted(file));
    EXPECT_TRUE(readBytes(file).has_value());
    EXPECT_FALSE(readBytes(file + L".new").has_value());
}
