// zemlink's requests to the stand-in host with the shipping add-in, and to hosts that do not read.
#include "support/companion_program.h"
#include "support/host_program.h"
#include "zemlink/announced_host.h"
#include "zemlink/tool_run.h"

#include <gtest/gtest.h>

using namespace testing_support;

namespace {

class ZemlinkRequests : public ::testing::Test {
protected:
    ToolResult run(const std::wstring& arguments) const { return runTool(installation, arguments); }

    std::wstring makePart() const
    {
        const std::wstring path = installation.path(L"plate.mcam");
        writeBytes(path, "");
        return path;
    }

    Installation installation{Registry::ofTheUser};
};

using ZemlinkOpen = ZemlinkRequests;
using ZemlinkNew = ZemlinkRequests;
using ZemlinkCheckin = ZemlinkRequests;
using ZemlinkUsage = ZemlinkRequests;

bool isReady(const HostProgram& host)
{
    return waitUntil([&] { return host.window() != nullptr; }) && host.waitForCommandFile();
}

std::string idOf(const HostProgram& host)
{
    return std::to_string(host.process().id());
}

const std::string taken = "taken: yes\nanswer: The host has taken the request.\n";
const std::string ownHostId = std::to_string(GetCurrentProcessId());

} // namespace

TEST_F(ZemlinkOpen, opensAFileInTheHost)
{
    const std::wstring part = makePart();
    const HostProgram host(installation, "");
    ASSERT_TRUE(isReady(host));
    const ToolResult result = run(L"open 17 " + quoted(part));
    EXPECT_EQ(result.exitCode, 0u) << result.errors;
    EXPECT_EQ(result.output, "request: open\nid: 17\npath: " + toUtf8(part) +
                                 "\nhost: " + idOf(host) + "\n" + taken);
    EXPECT_TRUE(host.waitForTrace(L"ui DoFileOpen(\"" + part + L"\""));
}

TEST_F(ZemlinkOpen, waitsUntilTheFileIsOpen)
{
    const std::wstring part = makePart();
    const HostProgram host(installation, "");
    ASSERT_TRUE(isReady(host));
    // Of an earlier load of the same file.
    writeBytes(installation.path(L"sys\\mcxlog.txt"), "Loading File #1: " + toUtf8(part) + "\r\n");
    const ToolResult result = run(L"open 17 " + quoted(part) + L" --until-opened --timeout 60");
    EXPECT_EQ(result.exitCode, 0u) << result.errors;
    EXPECT_EQ(result.output,
              "request: open\nid: 17\npath: " + toUtf8(part) + "\nhost: " + idOf(host) +
                  "\ntaken: yes\nanswer: The host has opened the file.\nopened: yes\n"
                  "last step: 7\nreached: ready to be named in the title and saved\n");
    EXPECT_EQ(count(host.trace(), L"ui DoFileOpen(\"" + part + L"\""), 1u);
}

TEST_F(ZemlinkOpen, reportsAFileThatWaitsInTheHost)
{
    const std::wstring part = makePart();
    const HostProgram host(installation, "set backplot true\n");
    ASSERT_TRUE(isReady(host));
    const ToolResult result =
        run(L"--json open 17 " + quoted(part) + L" --until-opened --timeout 1");
    EXPECT_EQ(result.exitCode, 5u) << result.errors;
    EXPECT_NE(result.output.find("\"taken\": true,"), std::string::npos) << result.output;
    EXPECT_NE(result.output.find("\"opened\": false,\n  \"lastStep\": 0,\n  \"reached\": \"the "
                                 "load has not begun\"\n}"),
              std::string::npos)
        << result.output;
}

TEST_F(ZemlinkOpen, reportsTheStepThatAFailedLoadReached)
{
    const std::wstring part = makePart();
    const HostProgram host(installation, "fail DoFileOpen\n");
    ASSERT_TRUE(isReady(host));
    const ToolResult result = run(L"open 17 " + quoted(part) + L" --until-opened --timeout 2");
    EXPECT_EQ(result.exitCode, 5u) << result.errors;
    EXPECT_NE(result.output.find("opened: no\nlast step: 1\nreached: asked for\n"),
              std::string::npos)
        << result.output;
}

TEST_F(ZemlinkNew, startsANewFileInTheHost)
{
    const HostProgram host(installation, "");
    ASSERT_TRUE(isReady(host));
    const ToolResult result = run(L"--json new 5");
    EXPECT_EQ(result.exitCode, 0u) << result.errors;
    EXPECT_EQ(result.output,
              "{\n  \"request\": \"new file\",\n  \"id\": 5,\n  \"host\": " + idOf(host) +
                  ",\n  \"taken\": true,\n"
                  "  \"answer\": \"The host has taken the request.\"\n}\n");
    EXPECT_TRUE(host.waitForTrace(LR"(other post_FT_command("Mastercam", "OnFileNew"))"));
    EXPECT_EQ(count(host.trace(), L"m_fclose"), 0u);
}

TEST_F(ZemlinkCheckin, closesTheFileInTheHost)
{
    const HostProgram host(installation, "");
    ASSERT_TRUE(isReady(host));
    const ToolResult result = run(L"checkin plate.mcam");
    EXPECT_EQ(result.exitCode, 0u) << result.errors;
    EXPECT_EQ(result.output,
              "request: check-in\nname: plate.mcam\nhost: " + idOf(host) + "\n" + taken);
    EXPECT_TRUE(host.waitForTrace(LR"(other post_FT_command("Mastercam", "OnFileNew"))"));
    EXPECT_EQ(count(host.trace(), L"other m_fclose(null, 0, null)"), 1u);
}

TEST_F(ZemlinkRequests, goToTheNamedHost)
{
    const HostProgram one(installation, "", L"one");
    const HostProgram two(installation, "", L"two");
    ASSERT_TRUE(isReady(one) && isReady(two));
    const ToolResult refused = run(L"checkin");
    EXPECT_EQ(refused.exitCode, 3u);
    EXPECT_EQ(refused.errors.find("zemlink: several hosts are running, choose one with --host: "),
              0u);
    EXPECT_NE(refused.errors.find(idOf(one) + " ("), std::string::npos) << refused.errors;
    EXPECT_NE(refused.errors.find(idOf(two) + " ("), std::string::npos) << refused.errors;
    EXPECT_EQ(run(L"checkin --host " + fromUtf8(idOf(two))).exitCode, 0u);
    EXPECT_TRUE(two.waitForTrace(L"other m_fclose("));
    EXPECT_EQ(count(one.trace(), L"m_fclose"), 0u);
}

TEST_F(ZemlinkRequests, needAHost)
{
    for (const wchar_t* arguments : {L"checkin", L"new 3"}) {
        const ToolResult result = run(arguments);
        EXPECT_EQ(result.exitCode, 3u);
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(result.errors, "zemlink: no host with the add-in is running\n");
    }
    EXPECT_EQ(run(L"new 3 --host 1").errors,
              "zemlink: process 1 is not a running host with the add-in\n");
}

TEST_F(ZemlinkRequests, stayInTheFileUntilTaken)
{
    const AnnouncedHost host;
    const std::wstring file = AnnouncedHost::makeCommandFile(installation);
    const ToolResult first = run(L"new 12 --timeout 1");
    EXPECT_EQ(first.exitCode, 4u);
    EXPECT_EQ(first.output, "request: new file\nid: 12\nhost: " + ownHostId +
                                "\ntaken: no\n"
                                "answer: The host has not taken the request. It is still in the "
                                "command file and is carried out if the host continues.\n");
    EXPECT_EQ(readBytes(file), "\xEF\xBB\xBF"
                               "12 \n");
}

TEST_F(ZemlinkRequests, neverOverwriteAnEarlierOne)
{
    const AnnouncedHost host;
    const std::wstring file = AnnouncedHost::makeCommandFile(installation);
    writeBytes(file, "CHECKIN a");
    const ToolResult result = run(L"new 12 --timeout 1");
    EXPECT_EQ(result.exitCode, 4u);
    EXPECT_EQ(result.output, "request: new file\nid: 12\nhost: " + ownHostId +
                                 "\ntaken: no\nanswer: Nothing was written: an earlier request "
                                 "is still in the command file, the host does not read it.\n");
    EXPECT_EQ(readBytes(file), "CHECKIN a");
}

TEST_F(ZemlinkRequests, respectTheLockOfAnotherWriter)
{
    const AnnouncedHost host;
    const std::wstring file = AnnouncedHost::makeCommandFile(installation);
    // Another writer that has checked the file and not written yet.
    const HANDLE other = CreateFileW(file.c_str(), GENERIC_WRITE,
                                     FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                     nullptr, OPEN_EXISTING, 0, nullptr);
    OVERLAPPED place{};
    place.OffsetHigh = 1;
    ASSERT_TRUE(
        LockFileEx(other, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &place));
    const ToolResult result = run(L"new 5 --timeout 1");
    CloseHandle(other);
    EXPECT_EQ(result.exitCode, 4u);
    EXPECT_NE(result.output.find("taken: no"), std::string::npos) << result.output;
    EXPECT_EQ(readBytes(file), "");
}

TEST_F(ZemlinkRequests, neverCreateACommandFile)
{
    const AnnouncedHost host;
    const ToolResult result = run(L"checkin --timeout 1");
    EXPECT_EQ(result.exitCode, 4u);
    EXPECT_NE(
        result.output.find("answer: Nothing was written: the command file does not exist. The "
                           "add-in is not open, uses another folder, or has stopped "
                           "listening.\n"),
        std::string::npos)
        << result.output;
    EXPECT_FALSE(readBytes(installation.commandFile(GetCurrentProcessId())).has_value());
}

TEST_F(ZemlinkRequests, reportWhyTheFileCannotBeWritten)
{
    const AnnouncedHost host;
    const std::wstring file = AnnouncedHost::makeCommandFile(installation);
    const HANDLE held = CreateFileW(file.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    const ToolResult result = run(L"checkin --timeout 1");
    EXPECT_EQ(result.exitCode, 4u);
    EXPECT_NE(
        result.output.find("answer: Nothing was written, the command file cannot be written: "),
        std::string::npos)
        << result.output;
    EXPECT_NE(result.output.find("(error 32)\n"), std::string::npos) << result.output;
    CloseHandle(held);
}

TEST_F(ZemlinkOpen, refusesMissingAndNonAsciiFiles)
{
    const ToolResult missing = run(L"open 17 C:\\nowhere.mcam");
    EXPECT_EQ(missing.exitCode, 1u);
    EXPECT_EQ(missing.errors.find("zemlink: C:\\nowhere.mcam: "), 0u) << missing.errors;
    EXPECT_NE(missing.errors.find("(error 2)\n"), std::string::npos) << missing.errors;
    const std::wstring foreign = installation.path(L"\u00C4.mcam");
    writeBytes(foreign, "");
    const ToolResult refused = run(L"open 17 " + quoted(foreign));
    EXPECT_EQ(refused.exitCode, 1u);
    EXPECT_EQ(refused.errors, "zemlink: " + toUtf8(foreign) +
                                  ": hosts accept only plain ASCII paths of less than 65536 "
                                  "bytes\n");
}

TEST_F(ZemlinkOpen, refusesADirectory)
{
    const HostProgram host(installation, "");
    ASSERT_TRUE(isReady(host));
    const ToolResult result = run(L"open 17 " + quoted(installation.path(L"temp")));
    EXPECT_EQ(result.exitCode, 1u);
    EXPECT_EQ(result.errors,
              "zemlink: " + toUtf8(installation.path(L"temp")) + ": this is a directory\n");
}

TEST_F(ZemlinkUsage, reportsWrongArgumentsWithExitCode2)
{
    const ToolResult result = run(L"open seventeen C:\\a.mcam");
    EXPECT_EQ(result.exitCode, 2u);
    EXPECT_EQ(result.output, "");
    EXPECT_NE(result.errors.find("seventeen"), std::string::npos) << result.errors;
}

TEST_F(ZemlinkUsage, reportsErrorsInOneLineOfJson)
{
    const ToolResult wrong = run(L"open seventeen C:\\a.mcam --json");
    EXPECT_EQ(wrong.exitCode, 2u);
    EXPECT_EQ(wrong.errors, "");
    EXPECT_EQ(wrong.output.find("{\"error\":{\"name\":\"wrong-usage\","), 0u) << wrong.output;
    const ToolResult noHost = run(L"--json new 3");
    EXPECT_EQ(noHost.exitCode, 3u);
    EXPECT_EQ(noHost.output, "{\"error\":{\"name\":\"no-host\","
                             "\"what\":\"no host with the add-in is running\"}}\n");
}

TEST_F(ZemlinkUsage, showsWhatToDoAboutAnError)
{
    const std::wstring archive = installation.path(L"support.zip");
    writeBytes(archive, "");
    EXPECT_EQ(run(L"report " + quoted(archive)).errors,
              "zemlink: " + toUtf8(archive) +
                  ": this file exists already\n"
                  "Give another name; nothing is overwritten.\n");
}
