// Notifications of changes in a folder.
#pragma once

#include <string>
#include <windows.h>

namespace zemlink {

// The folder may be deleted meanwhile; it is then not watched any more.
class FolderChanges {
public:
    explicit FolderChanges(std::wstring folder);
    ~FolderChanges();
    FolderChanges(FolderChanges&& other) noexcept;
    FolderChanges& operator=(FolderChanges&&) = delete;

    // Signalled once a file in the folder has come, gone, been renamed or written to. Null while
    // the folder does not exist.
    HANDLE handle() const { return handle_; }
    // Call it when the handle is signalled, before looking at the files, so that no later change is
    // missed.
    void rearm();
    // Begins to watch the folder once it exists, and again when it was replaced; true if it did.
    bool renew();

private:
    void stop();

    std::wstring folder_;
    HANDLE handle_ = nullptr;
};

} // namespace zemlink
