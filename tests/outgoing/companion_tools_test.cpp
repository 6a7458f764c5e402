// Tools of an open part, end to end: from the host's records through the add-in to the Companion's
// windows.
#include "addin/exports.h"
#include "support/companion_program.h"
#include "support/windows.h"
#include "host/record_adapter.h"
#include "support/add_in_state.h"
#include "support/host_fixture.h"
#include "outgoing/tool_export.h"

using namespace torvapdm;
using namespace testing_support;

namespace {

const char twoTools[] = R"(mastercam part 1

[plane]
id = 1
name = Top

[operation]
id = 101
tool-plane = 1
construction-plane = 1
tool.number = 4
tool.type = 10
tool.diameter = 12.5
tool.comment = End mill | 12=B

[operation]
id = 102
tool-plane = 1
construction-plane = 1
tool.number = 5
tool.type = 1
tool.diameter = 6
tool.comment = Ball
)";

} // namespace

using CompanionTools = HostFixture;

TEST_F(CompanionTools, showTheAddInsPictures)
{
    installCompanionWithLibrary(installation);
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    writeBytes(installation.path(L"part.mcam"), twoTools);
    ASSERT_TRUE(standin::putPart(installation.path(L"part.mcam")));
    DrawTool(64, 32, 4, 12.5, 0, 118, 26, 30, 80, 12, 4);
    DrawTool(40, 50, 1, 6, 3, 0, 10, 20, 60, 6, 5);
    AddInState::setRequestId(17);
    exportToolData();
    const HWND window = waitForWindowTitled(L"Tools 17");
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(rowsOfList(window, 0), 2);
    EXPECT_EQ(companion.count(L"tool id=17 number=4 type=10 diameter=12.5 operation=101 "
                              L"comment=\"End mill | 12=B\""),
              1u);
    EXPECT_EQ(companion.count(L"tool id=17 number=5 type=1 diameter=6 operation=102 "
                              L"comment=\"Ball\""),
              1u);
    EXPECT_EQ(companion.count(L"tool-record-bad"), 0u);
    // The rows are sorted by diameter as text, so 12.5 comes first.
    EXPECT_TRUE(waitUntil([&] { return shownPicture(window) == L"toolimage-4.bmp, 64 x 32"; }));
    selectWith(VK_DOWN, window);
    EXPECT_TRUE(waitUntil([&] { return shownPicture(window) == L"toolimage-5.bmp, 40 x 50"; }));
}
