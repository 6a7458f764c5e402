// `zemlink listen`.
#include "support/companion_program.h"
#include "support/host_program.h"
#include "support/sockets.h"
#include "support/companion_double.h"
#include "zemlink/tool_run.h"

#include <gtest/gtest.h>

using namespace testing_support;

namespace {

const std::string heading = "listening on port 4559\n\n";

class ZemlinkListen : public ::testing::Test {
protected:
    Sockets sockets;
    Installation installation{Registry::ofTheUser};
};

} // namespace

TEST_F(ZemlinkListen, showsEachKindOfNotice)
{
    const ToolRun run(installation, L"listen --count 5");
    ASSERT_TRUE(run.waitForOutput(heading)) << run.errors();
    EXPECT_TRUE(sendToCompanion("TOOL-17\n"));
    EXPECT_TRUE(sendToCompanion("ZEMID=17|C:\\parts\\a.mcam\n"));
    EXPECT_TRUE(sendToCompanion("ZEMID=4294967295|C:\\parts\\\xC4.mcam\n"));
    EXPECT_TRUE(sendToCompanion("")); // an empty connection
    EXPECT_TRUE(sendToCompanion("MCAMXMLIMPORTDATAID=17;C:\\Temp\\sheet.xml\n"));
    EXPECT_TRUE(sendToCompanion("hello\r\n"));
    EXPECT_EQ(run.waitForExit(), 0u);
    EXPECT_EQ(run.output(), heading + "notice: tool data\nid: 17\n\n"
                                      "notice: commit\nid: 17\nfile: C:\\parts\\a.mcam\n\n"
                                      "notice: commit\nid: none\nfile: C:\\parts\\\xC3\x84.mcam\n\n"
                                      "notice: setup sheet\nid: 17\nfile: C:\\Temp\\sheet.xml\n\n"
                                      "notice: unknown\nhex: 68656C6C6F0D0A\ntext: hello  \n\n");
}

TEST_F(ZemlinkListen, writesOneJsonLineForEachNotice)
{
    const ToolRun run(installation, L"listen --count 1 --json");
    ASSERT_TRUE(run.waitForOutput("{\"listening\":4559}\n")) << run.errors();
    EXPECT_TRUE(sendToCompanion("TOOL--5\n"));
    EXPECT_EQ(run.waitForExit(), 0u);
    EXPECT_EQ(run.output(), "{\"listening\":4559}\n{\"notice\":\"tool data\",\"id\":-5}\n");
}

TEST_F(ZemlinkListen, showsTheQueueOfTheAddIn)
{
    CompanionDouble companion;
    companion.holdSemaphore();
    const std::wstring part = installation.path(L"queue.mcam");
    writeBytes(part, "mastercam part 1\n\n[group]\nid = 1\nname = Mill\n\n"
                     "[operation]\nid = 1\ngroup = 1\nnci-name = PLATE\n\n");
    writeBytes(installation.path(L"tmp\\PLATE.NC"), "%\nO1\nM30\n%\n");
    const ToolRun run(installation, L"listen --count 1");
    ASSERT_TRUE(run.waitForOutput(heading)) << run.errors();
    const HostProgram host(installation, "set nc_prefix " + toUtf8(installation.path(L"tmp\\")) +
                                             "\nset nc_suffix .NC\npart " + toUtf8(part) +
                                             "\ncall importNCqueue\n");
    EXPECT_EQ(run.waitForExit(), 0u);
    const std::wstring queue = installation.path(L"temp\\ncqueue-0.txt");
    ASSERT_TRUE(readBytes(queue).has_value());
    EXPECT_EQ(run.output(), heading + "notice: NC queue\nfile: " + toUtf8(queue) + "\n\n");
    const ToolResult decoded = runTool(installation, L"decode " + quoted(queue));
    EXPECT_EQ(decoded.exitCode, 0u);
    EXPECT_EQ(decoded.output, "kind: queue\nbytes: " + std::to_string(readBytes(queue)->size()) +
                                  "\nprograms:\n  - nc path: -1\n    program: " +
                                  toUtf8(installation.path(L"tmp\\PLATE.NC")) +
                                  "\n    group: Mill\n");
}

TEST_F(ZemlinkListen, failsWhenThePortIsInUse)
{
    const LineReceiver other;
    const ToolResult result = runTool(installation, L"listen --count 1");
    EXPECT_EQ(result.exitCode, 6u);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors.find("Unknown error"), std::string::npos) << result.errors;
    EXPECT_EQ(result.errors.find("zemlink: port 4559 cannot be opened: "), 0u) << result.errors;
    EXPECT_NE(result.errors.find("(error 100"), std::string::npos) << result.errors;
    EXPECT_NE(result.errors.find(" use"), std::string::npos) << result.errors;
}

TEST_F(ZemlinkListen, failsWhileTheCompanionRuns)
{
    installCompanionWithLibrary(installation);
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    const ToolResult result = runTool(installation, L"listen --count 1 --json");
    EXPECT_EQ(result.exitCode, 6u);
    EXPECT_EQ(result.output.find("{\"error\":{\"name\":\"port-in-use\","
                                 "\"what\":\"port 4559 cannot be opened: "),
              0u)
        << result.output;
    EXPECT_EQ(result.output.find('\n'), result.output.size() - 1) << result.output;
}

TEST_F(ZemlinkListen, endsAfterItsTimeout)
{
    EXPECT_EQ(runTool(installation, L"listen --timeout 1").exitCode, 0u);
    const ToolResult missed = runTool(installation, L"listen --count 1 --timeout 1");
    EXPECT_EQ(missed.exitCode, 1u);
    EXPECT_EQ(missed.output, heading);
}
