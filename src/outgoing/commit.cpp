#include "outgoing/commit.h"

#include "formats/commit_record.h"
#include "outgoing/ftp_redirection.h"
#include "host/document.h"
#include "companion/process.h"
#include "companion/installation.h"
#include "companion/line_sender.h"
#include "host/message_box.h"
#include "shared_state.h"
#include "platform/text.h"

namespace torvapdm {

namespace {

// Deliberate: redirected when the document lies outside the installation folder. One would expect
// the same rule as when it is saved, where it is never redirected; with its FTP server on, the
// Companion is told a file of its own "tmp".
std::wstring commitFileName()
{
    std::wstring name = hostFileName();
    const std::wstring folder = getInstallationFolder();
    if (name.find(folder) != std::wstring::npos || !isFtpServerUsed())
        return name;
    return redirectedTo(folder, name);
}

// The request file belongs to the Companion's process, not to the host's. The caller closes it;
// INVALID_HANDLE_VALUE when it cannot be opened.
HANDLE openRequestFile(HWND companion)
{
    DWORD processId = 0;
    GetWindowThreadProcessId(companion, &processId);
    const std::wstring path =
        getInstallationFolder() + L"\\temp\\torvapdm-" + std::to_wstring(processId) + L".dat";
    return CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE,
                       FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_ALWAYS,
                       0, nullptr);
}

// Deliberate: neither the lock nor the write is checked. One would expect a failure to be told;
// the request counts as delivered once its file stands open.
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

bool recordCommit(HWND companion, const std::wstring& name)
{
    const std::uint32_t zemId = currentZemId;
    const std::string record = commitRecord(zemId, name);
    const HANDLE file = openRequestFile(companion);
    if (file == INVALID_HANDLE_VALUE)
        return false;
    appendLocked(file, record);
    CloseHandle(file);
    sendLine(commitNotice(zemId, toNarrowByRuntime(name)));
    return true;
}

} // namespace

bool requestCommit()
{
    if (!ensureCompanionRunning())
        return false;
    const std::wstring name = commitFileName();
    const HWND companion = findCompanionWindow();
    const bool delivered = companion ? recordCommit(companion, name)
                                     : launchCompanion(commitArguments(currentZemId, name), true);
    if (!delivered)
        showMessage(translateText(0, L"Failed to commit file to ZEM."));
    return delivered;
}

} // namespace torvapdm
