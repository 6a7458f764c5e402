// `zemlink decode` on files written by the stand-in Companion and the add-in.
#include "peer/commit_record.h"
#include "peer/exchange_paths.h"
#include "support/companion_program.h"
#include "support/host_program.h"
#include "support/companion_double.h"
#include "zemlink/announced_host.h"
#include "zemlink/tool_run.h"

#include <gtest/gtest.h>

using namespace testing_support;

namespace {

const std::wstring ownId = std::to_wstring(GetCurrentProcessId());

class ZemlinkDecode : public ::testing::Test {
protected:
    ToolResult decode(const std::wstring& file, const std::wstring& options = L"") const
    {
        return runTool(installation, L"decode " + quoted(file) + L' ' + options);
    }

    Installation installation{Registry::ofTheUser};
};

} // namespace

TEST_F(ZemlinkDecode, showsARequestAndItsMachineSettings)
{
    installCompanionWithLibrary(installation);
    const AnnouncedHost host;
    const std::wstring commandFile = AnnouncedHost::makeCommandFile(installation);
    const CompanionProgram companion(installation);
    ASSERT_EQ(companion.run(L"--send \"pump cover\" --host " + ownId), 0u);
    ASSERT_TRUE(companion.waitForLog(L"sent id=31"));
    ASSERT_TRUE(waitUntil([&] { return readBytes(commandFile).value_or("") != ""; }));
    const std::string path = toUtf8(installation.path(L"work\\pump cover.mcam"));
    const ToolResult request = decode(commandFile);
    EXPECT_EQ(request.exitCode, 0u);
    EXPECT_EQ(request.output, "kind: command\nbytes: " + std::to_string(7 + path.size()) +
                                  "\nrequest: open\nid: 31\npath: " + path + "\n");
    const ToolResult machine = decode(installation.path(L"temp\\mcsettings-31.txt"));
    EXPECT_EQ(machine.exitCode, 0u);
    EXPECT_EQ(machine.output, "kind: machine\nbytes: 41\nid: 31\nnc path: 5\nsecond number: 0\n"
                              "machine: C:\\Machines\\Mill 4-axis.mcam-mmd\n");
}

TEST_F(ZemlinkDecode, showsTheCommitsOfTheAddIn)
{
    CompanionDouble companion;
    companion.holdSemaphore();
    companion.showWindow();
    const std::wstring part = installation.path(L"a.mcam");
    writeBytes(part, "");
    const std::string script = "set geo_filename " + toUtf8(part) + "\ncall m_save 0\n";
    const HostProgram host(installation, script + script);
    const std::wstring file = installation.path(L"temp\\torvapdm-" + ownId + L".dat");
    const size_t size = 8 + 2 * part.size();
    ASSERT_TRUE(waitUntil([&] { return readBytes(file).value_or("").size() == 2 * size; }));
    const ToolResult result = decode(file);
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_EQ(result.output, "kind: commits\nbytes: " + std::to_string(2 * size) +
                                 "\nrecords:\n  - at: 0\n    id: 0\n    file: " + toUtf8(part) +
                                 "\n  - at: " + std::to_string(size) +
                                 "\n    id: 0\n    file: " + toUtf8(part) + "\n");
    const ToolResult status = runTool(installation, L"status");
    EXPECT_NE(status.output.find("commits waiting:\n  - file: " + toUtf8(file) +
                                 "\n    process running: yes\n    no bookmark: It is unknown which "
                                 "of these commits have been taken.\n    records:\n      - at: 0\n"
                                 "        id: 0\n        file: " +
                                 toUtf8(part) + "\n"),
              std::string::npos)
        << status.output;
}

TEST_F(ZemlinkDecode, showsALoadLogAndAPicture)
{
    CompanionDouble companion;
    companion.holdSemaphore();
    companion.showWindow();
    const std::wstring part = installation.path(L"bracket.mcam");
    writeBytes(part, "");
    const HostProgram host(installation, "wait-for CFile_DoFileSave 60000\ncall m_save 0\n");
    ASSERT_TRUE(waitUntil([&] { return host.window() != nullptr; }) && host.waitForCommandFile());
    ASSERT_EQ(runTool(installation, L"open 17 " + quoted(part)).exitCode, 0u);
    ASSERT_TRUE(host.waitForTrace(L"ui m_save(0) -> 0"));
    const ToolResult log = decode(installation.path(L"sys\\mcxlog.txt"));
    EXPECT_EQ(log.exitCode, 0u);
    EXPECT_NE(log.output.find("loads:\n  - file: " + toUtf8(part) +
                              "\n    finished: yes\n    last step: 7\n"),
              std::string::npos)
        << log.output;
    const ToolResult picture = decode(installation.path(L"commit\\screendump.bmp"));
    EXPECT_EQ(picture.exitCode, 0u) << picture.output;
    EXPECT_NE(picture.output.find("\nbits per pixel: 24\nfirst row: bottom\n"), std::string::npos)
        << picture.output;
}

TEST_F(ZemlinkDecode, showsTheSettingsInForce)
{
    const std::wstring file = installation.path(L"cfg\\settings.ini");
    writeBytes(file, "UseFtpServer=y\r\nAlwaysSaveTools=Y\r\nXUseFtpServer=n\r\nMCXCATIA=y");
    const ToolResult result = decode(file);
    EXPECT_EQ(result.exitCode, 1u);
    EXPECT_EQ(result.output,
              "kind: settings\nbytes: 62\nlines:\n  - UseFtpServer=y\n  - AlwaysSaveTools=Y\n"
              "  - XUseFtpServer=n\n  - MCXCATIA=y\nin force:\n  UseFtpServer: no\n"
              "  AlwaysSaveTools: no\n  MCXCATIA: no\n  MCXIMPORTNC: yes\nremarks:\n"
              "  - The last line has no line end: its value loses its last character.\n");
}

TEST_F(ZemlinkDecode, usesTheContentOrTheGivenKind)
{
    const std::wstring file = installation.path(L"copy.bin");
    writeBytes(file, "CHECKIN a.mcam");
    EXPECT_EQ(decode(file, L"--json").output,
              "{\n  \"kind\": \"command\",\n  \"bytes\": 14,\n  \"request\": \"check-in\",\n"
              "  \"name\": \"a.mcam\"\n}\n");
    EXPECT_EQ(decode(file, L"--as queue").output,
              "kind: queue\nbytes: 14\nprograms: none\nbad lines:\n  - 1\n");
}

TEST_F(ZemlinkDecode, showsTheCompanionsOwnFiles)
{
    installCompanionWithLibrary(installation);
    const std::wstring part = installation.path(L"plate.mcam");
    writeBytes(part, "mastercam part 1\n");
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    const peer::CommitPaths paths =
        peer::commitPaths(installation.root(), companion.process().id());
    writeBytes(paths.live, peer::formatCommitRecord({0, part}));
    const std::string bookmark = "taken " + std::to_string(8 + 2 * part.size()) + '\n';
    ASSERT_TRUE(waitUntil([&] { return readBytes(paths.bookmark) == bookmark; }));
    const ToolResult log = decode(installation.path(L"sys\\companion.log"));
    EXPECT_EQ(log.exitCode, 0u) << log.output;
    EXPECT_NE(log.output.find("\n    event: commit\n    file: " + toUtf8(part) + "\n"),
              std::string::npos)
        << log.output;
    const ToolResult copies = decode(installation.path(L"sys\\working-copies.txt"));
    EXPECT_EQ(copies.exitCode, 0u) << copies.output;
    EXPECT_NE(copies.output.find("\n    file: " + toUtf8(part) + "\n"), std::string::npos)
        << copies.output;
    const ToolResult taken = decode(paths.bookmark);
    EXPECT_EQ(taken.exitCode, 0u);
    EXPECT_EQ(taken.output, "kind: bookmark\nbytes: " + std::to_string(bookmark.size()) +
                                "\nfinished: no\n" + "taken: " + bookmark.substr(6));
    EXPECT_NE(runTool(installation, L"status").output.find("\ncommits waiting: none\n"),
              std::string::npos);
}

TEST_F(ZemlinkDecode, rejectsMissingAndUnknownFiles)
{
    const ToolResult missing = decode(installation.path(L"temp\\tool-17.txt"));
    EXPECT_EQ(missing.exitCode, 1u);
    EXPECT_NE(missing.errors.find("(error 2)\n"), std::string::npos) << missing.errors;
    const std::wstring file = installation.path(L"readme.txt");
    writeBytes(file, "hello");
    const ToolResult unknown = decode(file);
    EXPECT_EQ(unknown.exitCode, 1u);
    EXPECT_EQ(unknown.errors,
              "zemlink: " + toUtf8(file) +
                  ": neither its name nor its content is that of a file that zemlink knows; "
                  "if it is one, give its kind with --as\n");
    writeBytes(file, "UseFtpServer=y\n");
    EXPECT_EQ(decode(file).exitCode, 1u);
    EXPECT_EQ(decode(file).errors, unknown.errors);
    EXPECT_EQ(decode(file, L"--as settings").exitCode, 0u);
    EXPECT_EQ(decode(file, L"--as nonsense").exitCode, 2u);
}
