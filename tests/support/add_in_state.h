// Access to the add-in's process-wide variables for the tests that set or check them. No other test
// reads or writes them.
#pragma once

#include "shared_state.h"
#include "incoming/incoming_state.h"
#include "incoming/message_window.h"
#include "addin/host_events.h"
#include "support/waiting.h"

#include <cstdint>
#include <string>
#include <vector>

namespace testing_support {

struct AddInState {
    static std::int32_t requestId() { return torvapdm::currentRequestId; }
    static void setRequestId(std::int32_t id) { torvapdm::currentRequestId = id; }
    static std::uint32_t zemId() { return torvapdm::currentZemId; }
    static void setZemId(std::uint32_t id) { torvapdm::currentZemId = id; }
    static std::wstring filePath() { return torvapdm::currentFilePath.text(); }
    static void setFilePath(const std::wstring& p) { torvapdm::currentFilePath.assign(p); }
    static std::wstring fileTypePrefix() { return torvapdm::fileTypePrefix; }
    static void setFileTypePrefix(const std::wstring& p) { torvapdm::fileTypePrefix = p; }
    using File = torvapdm::CompanionFile;
    using Files = std::vector<File>;
    static const Files& recentFiles() { return torvapdm::recentFiles; }
    static void setRecentFiles(const Files& files) { torvapdm::recentFiles = files; }

    static std::int32_t ncPathNumber() { return torvapdm::ncPathNumber; }
    static void setNcPathNumber(std::int32_t number) { torvapdm::ncPathNumber = number; }
    static std::int32_t secondSettingsNumber() { return torvapdm::secondSettingsNumber; }
    static void setSecondSettingsNumber(std::int32_t n) { torvapdm::secondSettingsNumber = n; }

    static bool isSaveUnreported() { return torvapdm::isSaveUnreported; }
    static void setSaveUnreported(bool is) { torvapdm::isSaveUnreported = is; }
    static bool event37Seen() { return torvapdm::event37Seen; }
    static void setEvent37Seen(bool is) { torvapdm::event37Seen = is; }
    static bool captureOnCloseEnabled() { return torvapdm::captureOnCloseEnabled; }
    static void setCaptureOnCloseEnabled(bool is) { torvapdm::captureOnCloseEnabled = is; }
    static bool captureOnClosePending() { return torvapdm::captureOnClosePending; }
    static void setCaptureOnClosePending(bool is) { torvapdm::captureOnClosePending = is; }

    static HWND messageWindow() { return torvapdm::messageWindow; }
    static void setMessageWindow(HWND window) { torvapdm::messageWindow = window; }
    static void postRequest(const File& f) { postOpenRequest(std::make_unique<File>(f)); }
    // The registered messages; 0 until they are registered.
    static UINT openMessage() { return torvapdm::openMessage; }
    static UINT commitMessage() { return torvapdm::commitMessage; }
    static UINT getCheckedOutMessage() { return torvapdm::getCheckedOutMessage; }

    static std::wstring commandFilePath() { return torvapdm::commandFilePath.text(); }
    static HANDLE commandFile() { return torvapdm::commandFile; }
    static void setCommandFile(HANDLE file) { torvapdm::commandFile = file; }
    static HANDLE listenerThread() { return torvapdm::listenerThread; }
    static bool isListenerStopped() { return torvapdm::listenerStopFlag != 0; }
    static void stopListener() { torvapdm::listenerStopFlag = 1; } // after the current poll
    static void allowListener() { torvapdm::listenerStopFlag = 0; }

    // Resets all values to their initial state, except the handles and the window.
    static void reset()
    {
        setRequestId(0);
        setZemId(torvapdm::noZemId);
        setFilePath(L"");
        setFileTypePrefix(L"");
        setRecentFiles({});
        setNcPathNumber(-1);
        setSecondSettingsNumber(0);
        setSaveUnreported(true);
        setEvent37Seen(false);
        setCaptureOnCloseEnabled(false);
        setCaptureOnClosePending(false);
        allowListener();
    }
};

// While it exists, replaces the message window with a message-only window, which receives only
// messages posted to it, and records them.
class WatchedMessageWindow {
public:
    WatchedMessageWindow()
    {
        SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&remember));
        AddInState::setMessageWindow(window_);
    }
    ~WatchedMessageWindow()
    {
        AddInState::setMessageWindow(replaced_);
        DestroyWindow(window_);
    }
    WatchedMessageWindow(const WatchedMessageWindow&) = delete;
    WatchedMessageWindow& operator=(const WatchedMessageWindow&) = delete;

    // Ids of the messages received with wParam and lParam 0. Runs the message loop.
    const std::vector<UINT>& arrived() const
    {
        pumpMessages();
        return arrived_;
    }

private:
    static LRESULT CALLBACK remember(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
    {
        auto* const self =
            reinterpret_cast<WatchedMessageWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        if (wParam == 0 && lParam == 0)
            self->arrived_.push_back(message);
        return DefWindowProcW(window, message, wParam, lParam);
    }

    const HWND replaced_ = AddInState::messageWindow();
    const HWND window_ =
        CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    std::vector<UINT> arrived_;
};

} // namespace testing_support
