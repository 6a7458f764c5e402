#include "host/message_box.h"

#include "host/host.h"
#include "host/barriers.h"
#include "support/host_fixture.h"
#include "host/document.h"
#include "support/system_calls.h"

using namespace torvapdm;
using namespace testing_support;

using AddInMessageBoxes = HostFixture;

namespace {

UINT boxStyle = ~0u;

int WINAPI notedBox(HWND, LPCWSTR, LPCWSTR, UINT style)
{
    boxStyle = style;
    return IDOK;
}

} // namespace

TEST_F(AddInMessageBoxes, haveAnOkButtonAndNoIcon)
{
    standin::redirectImports(GetModuleHandleW(nullptr), &MessageBoxW, &notedBox);
    showMessage(L"text");
    EXPECT_EQ(boxStyle, UINT{MB_OK});
}

TEST_F(AddInMessageBoxes, haveTheProductNameAsTitle)
{
    showMessage(L"Failed to load file.");
    showMessage(L"", L"text");
    showMessage(L"Caption", L"text");
    EXPECT_EQ(newTrace(), (Lines{LR"(ui message-box("TORVA ZEM", "Failed to load file."))",
                                 LR"(ui message-box("TORVA ZEM", "text"))",
                                 LR"(ui message-box("Caption", "text"))"}));
}

TEST_F(AddInMessageBoxes, areOwnedByTheMainWindow)
{
    static HWND owner;
    owner = nullptr;
    const auto keepOwner = [](int code, WPARAM window, LPARAM l) -> LRESULT {
        if (code == HCBT_ACTIVATE && !owner)
            owner = GetWindow(reinterpret_cast<HWND>(window), GW_OWNER);
        return CallNextHookEx(nullptr, code, window, l);
    };
    const HHOOK hook = SetWindowsHookExW(WH_CBT, keepOwner, nullptr, GetCurrentThreadId());
    showMessage(L"text");
    UnhookWindowsHookEx(hook);
    EXPECT_EQ(owner, getMainFrameWindow());
    EXPECT_EQ(getMainFrameWindow(), get_MainFrame()->GetSafeHwnd());
    EXPECT_TRUE(IsWindow(getMainFrameWindow()));
}

TEST_F(AddInMessageBoxes, askForTheMainWindowUntilThereIsOne)
{
    standin::failNext("get_MainFrame");
    EXPECT_EQ(getMainFrameWindow(), nullptr);
    EXPECT_NE(getMainFrameWindow(), nullptr);
    standin::failNext("get_MainFrame");
    EXPECT_NE(getMainFrameWindow(), nullptr); // cached, not requested again
}

TEST_F(AddInMessageBoxes, surviveAWindowException)
{
    standin::raiseNext("get_MainFrame");
    EXPECT_EQ(getMainFrameWindow(), nullptr);
    EXPECT_EQ(standin::undeletedExceptions(), 0);
}

TEST_F(AddInMessageBoxes, hideFrameworkExceptions)
{
    standin::raiseNext("set_db_unchanged");
    EXPECT_FALSE(callHost([] { set_db_unchanged(); }));
    EXPECT_TRUE(callHost([] { set_db_unchanged(); }));
    EXPECT_EQ(standin::undeletedExceptions(), 0);
    EXPECT_EQ(newTrace(), (Lines{L"ui set_db_unchanged() raised", L"ui set_db_unchanged()"}));
}

TEST_F(AddInMessageBoxes, passOnOtherExceptions)
{
    EXPECT_THROW(callHost([] { throw std::runtime_error("other"); }), std::runtime_error);
}
