#include "support/add_in_state.h"

#include "shared_state.h"
#include "incoming/incoming_state.h"
#include "addin/host_events.h"
#include "formats/wire_constants.h"

namespace testing_support {

void AddInState::reset()
{
    setRequestId(0);
    setZemId(torvapdm::noZemId);
    setFilePath(L"");
    setFileTypePrefix(L"");
    setRecentFiles({});
    setNcPathNumber(-1);
    setSecondSettingsNumber(0);
    setSaveNotified(true);
    setEvent37Seen(false);
    setCaptureOnCloseEnabled(false);
    setCaptureOnClosePending(false);
}

std::int32_t AddInState::requestId()
{
    return torvapdm::currentRequestId;
}
void AddInState::setRequestId(std::int32_t id)
{
    torvapdm::currentRequestId = id;
}

std::uint32_t AddInState::zemId()
{
    return torvapdm::currentZemId;
}
void AddInState::setZemId(std::uint32_t id)
{
    torvapdm::currentZemId = id;
}

std::wstring AddInState::filePath()
{
    return torvapdm::currentFilePath.text();
}
void AddInState::setFilePath(const std::wstring& path)
{
    torvapdm::currentFilePath.assign(path);
}

std::wstring AddInState::fileTypePrefix()
{
    return torvapdm::fileTypePrefix;
}
void AddInState::setFileTypePrefix(const std::wstring& prefix)
{
    torvapdm::fileTypePrefix = prefix;
}

std::vector<torvapdm::CompanionFile> AddInState::recentFiles()
{
    return torvapdm::recentFiles;
}
void AddInState::setRecentFiles(const std::vector<torvapdm::CompanionFile>& files)
{
    torvapdm::recentFiles = files;
}

std::int32_t AddInState::ncPathNumber()
{
    return torvapdm::ncPathNumber;
}
void AddInState::setNcPathNumber(std::int32_t number)
{
    torvapdm::ncPathNumber = number;
}

std::int32_t AddInState::secondSettingsNumber()
{
    return torvapdm::secondSettingsNumber;
}
void AddInState::setSecondSettingsNumber(std::int32_t number)
{
    torvapdm::secondSettingsNumber = number;
}

bool AddInState::saveNotified()
{
    return torvapdm::saveNotified;
}
void AddInState::setSaveNotified(bool is)
{
    torvapdm::saveNotified = is;
}

bool AddInState::event37Seen()
{
    return torvapdm::event37Seen;
}
void AddInState::setEvent37Seen(bool is)
{
    torvapdm::event37Seen = is;
}

bool AddInState::captureOnCloseEnabled()
{
    return torvapdm::captureOnCloseEnabled;
}
void AddInState::setCaptureOnCloseEnabled(bool is)
{
    torvapdm::captureOnCloseEnabled = is;
}

bool AddInState::captureOnClosePending()
{
    return torvapdm::captureOnClosePending;
}
void AddInState::setCaptureOnClosePending(bool is)
{
    torvapdm::captureOnClosePending = is;
}

HWND AddInState::messageWindow()
{
    return torvapdm::messageWindow;
}
void AddInState::setMessageWindow(HWND window)
{
    torvapdm::messageWindow = window;
}

UINT AddInState::openMessage()
{
    return torvapdm::openMessage;
}

UINT AddInState::commitMessage()
{
    return torvapdm::commitMessage;
}

UINT AddInState::getCheckedOutMessage()
{
    return torvapdm::getCheckedOutMessage;
}

std::wstring AddInState::commandFilePath()
{
    return torvapdm::commandFilePath.text();
}

HANDLE AddInState::commandFile()
{
    return torvapdm::commandFile;
}
void AddInState::setCommandFile(HANDLE file)
{
    torvapdm::commandFile = file;
}

HANDLE AddInState::listenerThread()
{
    return torvapdm::listenerThread;
}

bool AddInState::isListenerStopped()
{
    return torvapdm::listenerStopFlag != 0;
}
void AddInState::stopListener()
{
    torvapdm::listenerStopFlag = 1;
}
void AddInState::allowListener()
{
    torvapdm::listenerStopFlag = 0;
}

} // namespace testing_support
