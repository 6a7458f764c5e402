#include "tools/zemlink/session/folder_changes.h"

#include "tools/zemlink/session/file_look.h"

#include <utility>

namespace zemlink {

FolderChanges::FolderChanges(std::wstring folder) : folder_(std::move(folder))
{
    renew();
}

FolderChanges::~FolderChanges()
{
    stop();
}

FolderChanges::FolderChanges(FolderChanges&& other) noexcept
    : folder_(std::move(other.folder_)), handle_(std::exchange(other.handle_, nullptr))
{
}

void FolderChanges::rearm()
{
    if (handle_ && !FindNextChangeNotification(handle_))
        stop();
}

bool FolderChanges::renew()
{
    if (!isFolder(folder_)) {
        stop();
        return false;
    }
    if (handle_)
        return false;
    const HANDLE found = FindFirstChangeNotificationW(
        folder_.c_str(), FALSE,
        FILE_NOTIFY_CHANGE_FILE_NAME | FILE_NOTIFY_CHANGE_SIZE | FILE_NOTIFY_CHANGE_LAST_WRITE);
    handle_ = found == INVALID_HANDLE_VALUE ? nullptr : found;
    return handle_ != nullptr;
}

void FolderChanges::stop()
{
    if (handle_)
        FindCloseChangeNotification(handle_);
    handle_ = nullptr;
}

} // namespace zemlink
