// The values that the add-in keeps for the life of its process, for the tests that arrange or check
// them. No other test reads or writes the add-in's variables.
#pragma once

#include "formats/companion_file.h"
#include "formats/wire_constants.h"
#include "incoming/incoming_state.h"
#include "addin/host_events.h"

#include <cstdint>
#include <string>
#include <vector>
#include <windows.h>

namespace testing_support {

struct AddInState {
    // Gives the values the ones they start with, all but the handles and the window.
    static void reset();

    static std::int32_t requestId();
    static void setRequestId(std::int32_t id);
    static std::uint32_t zemId(); // `noZemId` while no file of the Companion is open
    static void setZemId(std::uint32_t id);
    static std::wstring filePath();
    static void setFilePath(const std::wstring& path);
    static std::wstring fileTypePrefix();
    static void setFileTypePrefix(const std::wstring& prefix);
    static std::vector<torvapdm::CompanionFile> recentFiles();
    static void setRecentFiles(const std::vector<torvapdm::CompanionFile>& files);

    static std::int32_t ncPathNumber();
    static void setNcPathNumber(std::int32_t number);
    static std::int32_t secondSettingsNumber();
    static void setSecondSettingsNumber(std::int32_t number);

    static bool saveNotified();
    static void setSaveNotified(bool is);
    static bool event37Seen();
    static void setEvent37Seen(bool is);
    static bool captureOnCloseEnabled();
    static void setCaptureOnCloseEnabled(bool is);
    static bool captureOnClosePending();
    static void setCaptureOnClosePending(bool is);

    static HWND messageWindow();
    static void setMessageWindow(HWND window);
    // The registered messages, 0 until they are registered.
    static UINT openMessage();
    static UINT commitMessage();
    static UINT getCheckedOutMessage();

    static std::wstring commandFilePath();
    static HANDLE commandFile();
    static void setCommandFile(HANDLE file);
    static HANDLE listenerThread();
    static bool isListenerStopped();
    static void stopListener(); // the listener ends after its present poll
    static void allowListener();
};

} // namespace testing_support
