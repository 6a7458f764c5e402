#include "incoming/message_window.h"

#include "host/host.h"
#include "companion/identifiers.h"
#include "host/message_box.h"
#include "incoming/pending_request.h"
#include "support/add_in_state.h"
#include "support/host_fixture.h"
#include "support/system_calls.h"
#include "host/document.h"
#include "incoming/incoming_state.h"

using namespace torvapdm;
using namespace testing_support;

namespace {

class MessageWindow : public HostFixture {
protected:
    MessageWindow()
    {
        registerMessages();
        AddInState::setMessageWindow(createMessageWindow());
    }
    ~MessageWindow() override { DestroyWindow(AddInState::messageWindow()); }

    LRESULT sendOpenMessage()
    {
        return SendMessageW(AddInState::messageWindow(), AddInState::openMessage(), 0, 0);
    }
    bool hasOpened()
    {
        for (const std::wstring& line : newTrace())
            if (line.find(L"DoFileOpen") != line.npos)
                return true;
        return false;
    }
};

WNDCLASSW registeredClass{};
CREATESTRUCTW created{};

ATOM WINAPI notedRegisterClass(const WNDCLASSW* windowClass)
{
    registeredClass = *windowClass;
    return systems(&RegisterClassW, "RegisterClassW", L"user32.dll")(windowClass);
}

HWND WINAPI notedCreateWindow(DWORD extended, LPCWSTR name, LPCWSTR title, DWORD style, int x,
                              int y, int width, int height, HWND parent, HMENU menu,
                              HINSTANCE instance, LPVOID parameter)
{
    created = {parameter, instance, menu,    parent, height, width, y, x, static_cast<LONG>(style),
               title,     name,     extended};
    return systems(&CreateWindowExW, "CreateWindowExW", L"user32.dll")(
        extended, name, title, style, x, y, width, height, parent, menu, instance, parameter);
}

std::vector<UINT> defaultMessages;

LRESULT WINAPI notedDefault(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    defaultMessages.push_back(message);
    return systems(&DefWindowProcW, "DefWindowProcW", L"user32.dll")(window, message, wParam,
                                                                     lParam);
}

// Whether a request was pending at each post of the open message.
std::vector<bool> pendingAtPost;

BOOL WINAPI notedOpenPost(HWND, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == AddInState::openMessage() && wParam == 0 && lParam == 0)
        pendingAtPost.push_back(isRequestPending());
    return TRUE;
}

using NewMessageWindow = HostFixture;

} // namespace

TEST_F(NewMessageWindow, isPlainAndPlacedByWindows)
{
    redirectCalls(&RegisterClassW, "RegisterClassW", &notedRegisterClass, L"user32.dll");
    redirectCalls(&CreateWindowExW, "CreateWindowExW", &notedCreateWindow, L"user32.dll");
    const HWND window = createMessageWindow();
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(registeredClass.style, 0u);
    EXPECT_EQ(registeredClass.lpfnWndProc, &messageWindowProc);
    EXPECT_EQ(registeredClass.cbClsExtra + registeredClass.cbWndExtra, 0);
    EXPECT_EQ(registeredClass.hInstance, nullptr);
    EXPECT_EQ(registeredClass.hIcon, nullptr);
    EXPECT_EQ(registeredClass.hCursor, nullptr);
    EXPECT_EQ(registeredClass.hbrBackground, nullptr);
    EXPECT_EQ(registeredClass.lpszMenuName, nullptr);
    for (const int place : {created.x, created.y, created.cx, created.cy})
        EXPECT_EQ(place, CW_USEDEFAULT);
    EXPECT_EQ(created.dwExStyle, 0u);
    EXPECT_EQ(created.style, LONG{WS_OVERLAPPEDWINDOW});
    EXPECT_EQ(created.hInstance, nullptr);
    EXPECT_EQ(created.hMenu, nullptr);
    EXPECT_EQ(created.lpCreateParams, nullptr);
    DestroyWindow(window);
}

TEST_F(NewMessageWindow, waitsForAMainWindow)
{
    standin::failNext("get_MainFrame");
    EXPECT_FALSE(isHostReady());
    EXPECT_TRUE(isHostReady());
}

TEST_F(MessageWindow, leavesEveryOtherMessageToWindows)
{
    AddInState::postRequest({12, makePart()});
    redirectCalls(&DefWindowProcW, "DefWindowProcW", &notedDefault, L"user32.dll");
    const std::vector<UINT> others = {WM_NULL, WM_MOVE, WM_TIMER, WM_APP,
                                      AddInState::commitMessage()};
    for (const UINT message : others)
        messageWindowProc(AddInState::messageWindow(), message, 0, 0);
    EXPECT_EQ(defaultMessages, others);
    EXPECT_TRUE(isRequestPending());
    sendOpenMessage();
    EXPECT_EQ(defaultMessages, others);
}

TEST_F(MessageWindow, isNotifiedOnceTheRequestIsStored)
{
    redirectCalls(&PostMessageW, "PostMessageW", &notedOpenPost, L"user32.dll");
    AddInState::postRequest({12, L"C:\\a.mcam"});
    AddInState::postRequest({-1, L"C:\\a.mcam"}); // replaces it and is announced too
    EXPECT_EQ(pendingAtPost, (std::vector<bool>{true, false}));
}

TEST_F(MessageWindow, registersItsThreeMessages)
{
    EXPECT_EQ(AddInState::openMessage(), RegisterWindowMessageW(openMessageName.c_str()));
    EXPECT_EQ(AddInState::commitMessage(), RegisterWindowMessageW(commitMessageName.c_str()));
    EXPECT_EQ(AddInState::getCheckedOutMessage(),
              RegisterWindowMessageW(getCheckedOutMessageName.c_str()));
    EXPECT_NE(AddInState::openMessage(), AddInState::commitMessage());
    EXPECT_GE(AddInState::openMessage(), 0xC000u);
}

TEST_F(MessageWindow, isHiddenAndOwnedByTheMainWindow)
{
    wchar_t name[256];
    ASSERT_NE(AddInState::messageWindow(), nullptr);
    GetClassNameW(AddInState::messageWindow(), name, 256);
    EXPECT_EQ(name, hostInstanceName);
    GetWindowTextW(AddInState::messageWindow(), name, 256);
    EXPECT_STREQ(name, L"");
    EXPECT_FALSE(IsWindowVisible(AddInState::messageWindow()));
    EXPECT_EQ(GetWindow(AddInState::messageWindow(), GW_OWNER), getMainFrameWindow());
    const LONG style = GetWindowLongW(AddInState::messageWindow(), GWL_STYLE);
    EXPECT_EQ(style & WS_OVERLAPPEDWINDOW, WS_OVERLAPPEDWINDOW);
}

TEST_F(MessageWindow, cannotBeCreatedTwiceInAProcess)
{
    EXPECT_EQ(createMessageWindow(), nullptr);
}

TEST_F(MessageWindow, returnsZeroWithoutARequest)
{
    EXPECT_EQ(sendOpenMessage(), 0);
    EXPECT_FALSE(hasOpened());
}

TEST_F(MessageWindow, opensThePendingRequestOnce)
{
    const std::wstring part = makePart();
    AddInState::postRequest({12, part});
    EXPECT_TRUE(isRequestPending());
    EXPECT_EQ(sendOpenMessage(), 1);
    EXPECT_FALSE(isRequestPending());
    EXPECT_TRUE(hasOpened());
    EXPECT_EQ(AddInState::zemId(), 12u);
    EXPECT_EQ(sendOpenMessage(), 0);
}

TEST_F(MessageWindow, isNotifiedByAPostedMessage)
{
    AddInState::postRequest({12, makePart()});
    EXPECT_TRUE(waitUntil([] { return AddInState::zemId() == 12; }));
}

TEST_F(MessageWindow, waitsWhileTheHostIsDisabled)
{
    AddInState::postRequest({12, makePart()});
    standin::setState("main_window_enabled", L"false");
    EXPECT_FALSE(isHostReady());
    EXPECT_EQ(sendOpenMessage(), 0);
    EXPECT_TRUE(isRequestPending());
    EXPECT_FALSE(hasOpened());
    standin::setState("main_window_enabled", L"true");
    EXPECT_TRUE(isHostReady());
    EXPECT_EQ(sendOpenMessage(), 1);
    EXPECT_TRUE(hasOpened());
}

TEST_F(MessageWindow, waitsDuringABackplot)
{
    AddInState::postRequest({12, makePart()});
    standin::setState("backplot", L"true");
    EXPECT_FALSE(isHostReady());
    EXPECT_EQ(sendOpenMessage(), 0);
    EXPECT_TRUE(isRequestPending());
    standin::setState("backplot", L"false");
    EXPECT_EQ(sendOpenMessage(), 1);
}

TEST_F(MessageWindow, waitsWhenTheBackplotIsUnknown)
{
    AddInState::postRequest({12, makePart()});
    standin::raiseNext("BackplotActive");
    EXPECT_EQ(sendOpenMessage(), 0);
    EXPECT_TRUE(isRequestPending());
    EXPECT_EQ(standin::undeletedExceptions(), 0);
    EXPECT_EQ(sendOpenMessage(), 1);
}

TEST_F(MessageWindow, takesARequestItCannotOpen)
{
    AddInState::postRequest({12, installation.path(L"missing.mcam")});
    EXPECT_EQ(sendOpenMessage(), 1);
    EXPECT_FALSE(isRequestPending());
    EXPECT_EQ(newTrace(), Lines{LR"(ui message-box("TORVA ZEM", "The file does not exist."))"});
}

TEST_F(MessageWindow, keepsARequestThatArrivesMeanwhile)
{
    // The next request arrives while the message box about the missing file is shown.
    const auto parkNext = [](int code, WPARAM window, LPARAM l) -> LRESULT {
        if (code == HCBT_ACTIVATE && AddInState::requestId() != 2) {
            AddInState::setRequestId(2);
            AddInState::postRequest({2, L"C:\\next.mcam"});
        }
        return CallNextHookEx(nullptr, code, window, l);
    };
    AddInState::postRequest({1, installation.path(L"missing.mcam")});
    const HHOOK hook = SetWindowsHookExW(WH_CBT, parkNext, nullptr, GetCurrentThreadId());
    EXPECT_EQ(sendOpenMessage(), 1);
    UnhookWindowsHookEx(hook);
    const auto request = takePendingRequest();
    ASSERT_TRUE(request.has_value());
    EXPECT_EQ(request->id, 2);
}

TEST_F(MessageWindow, leavesOtherMessagesToTheDefault)
{
    AddInState::postRequest({12, makePart()});
    SendMessageW(AddInState::messageWindow(), WM_MOVE, 0, 0);
    SendMessageW(AddInState::messageWindow(), AddInState::commitMessage(), 0, 0);
    SendMessageW(AddInState::messageWindow(), AddInState::getCheckedOutMessage(), 0, 0);
    EXPECT_TRUE(isRequestPending());
    SendMessageW(AddInState::messageWindow(), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"title"));
    wchar_t title[16];
    GetWindowTextW(AddInState::messageWindow(), title, 16);
    EXPECT_STREQ(title, L"title");
}

TEST_F(MessageWindow, isForgottenWhenClosed)
{
    SendMessageW(AddInState::messageWindow(), WM_CLOSE, 0, 0);
    EXPECT_EQ(AddInState::messageWindow(), nullptr);
    redirectCalls(&PostMessageW, "PostMessageW", &notedOpenPost, L"user32.dll");
    AddInState::postRequest({12, makePart()});
    EXPECT_EQ(pendingAtPost, std::vector<bool>{}); // no message is posted
    EXPECT_TRUE(isRequestPending());
}

TEST_F(MessageWindow, ignoresAnotherWindowsMessage)
{
    const HWND other = CreateWindowExW(0, hostInstanceName.c_str(), L"", WS_OVERLAPPEDWINDOW, 0, 0,
                                       10, 10, nullptr, nullptr, nullptr, nullptr);
    AddInState::postRequest({12, makePart()});
    EXPECT_EQ(SendMessageW(other, AddInState::openMessage(), 0, 0), 0);
    EXPECT_TRUE(isRequestPending());
    DestroyWindow(other);
}

TEST_F(MessageWindow, holdsOnlyTheLatestRequest)
{
    const std::wstring second = makePart(L"second.mcam");
    AddInState::postRequest({1, makePart(L"first.mcam")});
    AddInState::postRequest({2, second});
    const auto request = takePendingRequest();
    ASSERT_TRUE(request.has_value());
    EXPECT_EQ(request->id, 2);
    EXPECT_EQ(request->path, second);
    EXPECT_FALSE(takePendingRequest().has_value());
}

TEST_F(MessageWindow, ignoresIdMinusOneAndEmptyPaths)
{
    AddInState::postRequest({-1, L"C:\\a.mcam"});
    EXPECT_FALSE(isRequestPending());
    AddInState::postRequest({5, L""});
    EXPECT_FALSE(isRequestPending());
    AddInState::postRequest({5, L"C:\\a.mcam"});
    EXPECT_TRUE(isRequestPending());
    clearPendingRequest();
    EXPECT_FALSE(isRequestPending());
}
