#include "outgoing/commit.h"

#include "companion/installation.h"
#include "companion/line_sender.h"
#include "companion/process.h"
#include "companion/settings.h"
#include "formats/command_lines.h"
#include "formats/commit_record.h"
#include "formats/notices.h"
#include "host/document.h"
#include "host/message_box.h"
#include "platform/files.h"
#include "platform/narrow_text.h"
#include "shared_state.h"

namespace torvapdm {

namespace {

// Quirk Q51: a document whose name does not contain the installation folder is committed under the
// FTP server's path, although the save was not redirected there.
std::wstring commitFileName()
{
    std::wstring name = hostFileName();
    const std::wstring& folder = getInstallationFolder();
    if (name.find(folder) != std::wstring::npos || !isSettingOn("UseFtpServer"))
        return name;
    return ftpPath(folder, name);
}

OwnHandle openCommitFile(HWND companionWindow)
{
    DWORD processId = 0;
    GetWindowThreadProcessId(companionWindow, &processId);
    return ownHandle(CreateFileW(commitFilePath(processId).c_str(), GENERIC_READ | GENERIC_WRITE,
                                 FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                 OPEN_ALWAYS, 0, nullptr));
}

// Locks exactly the bytes to be written, so that the Companion, which takes the same lock, never
// reads half of a record.
//
// Quirk Q52: the results are not checked; the commit counts as delivered once the file is open.
void appendLocked(HANDLE file, const std::string& record)
{
    const auto length = static_cast<DWORD>(record.size());
    LONG endHigh = 0;
    const DWORD end = SetFilePointer(file, 0, &endHigh, FILE_END);
    LockFile(file, end, static_cast<DWORD>(endHigh), length, 0);
    DWORD written = 0;
    WriteFile(file, record.data(), length, &written, nullptr);
    UnlockFile(file, end, static_cast<DWORD>(endHigh), length, 0);
}

// False when the commit file cannot be opened. It is closed again before the notice is sent.
bool appendCommitRecord(HWND companionWindow, const std::string& record)
{
    const OwnHandle file = openCommitFile(companionWindow);
    if (!file)
        return false;
    appendLocked(file.get(), record);
    return true;
}

bool recordCommit(HWND companionWindow, const std::wstring& name)
{
    const std::uint32_t zemId = currentZemId; // once, since the listener can change it
    if (!appendCommitRecord(companionWindow, formatCommitRecord(zemId, name)))
        return false;
    sendLine(formatCommitNotice(zemId, toNarrowByRuntime(name)));
    return true;
}

bool deliver(const std::wstring& name)
{
    if (const HWND companionWindow = findCompanionWindow())
        return recordCommit(companionWindow, name);
    return launchCompanion(formatCommitArguments(currentZemId, name), true);
}

} // namespace

bool commitDocument()
{
    if (!ensureCompanionRunning())
        return false;
    const bool isDelivered = deliver(commitFileName());
    if (!isDelivered)
        showMessage(L"Failed to commit file to ZEM.");
    return isDelivered;
}

} // namespace torvapdm
