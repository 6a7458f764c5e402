// Registers another installation folder while programs are verified.
#pragma once

#include "peer/handle.h"
#include "tools/zemlink/session/companion_role.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace zemlink {

struct HostIsRunning : std::runtime_error {
    using std::runtime_error::runtime_error;
};
struct VerificationIsRunning : std::runtime_error {
    using std::runtime_error::runtime_error;
};
struct FolderIsInUse : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// The folder is the current user's installation folder as long as the object exists; one object at
// a time. Its subfolders `cfg`, `commit`, `sys`, `temp` and `tmp` are created if they are missing,
// and those that were are removed if they are empty in the end.
//
// The earlier value is kept in the registry next to it, under the name `installation folder before
// zemlink verify`: if the process is killed, the next object restores that value first, unless
// another folder was registered meanwhile.
class RegisteredFolder {
public:
    // `folder` has no trailing backslash. Throws VerificationIsRunning when another process has
    // such an object; CompanionIsRunning or HostIsRunning, because these would use the folder or
    // find the verified program; FolderIsInUse when it is the user's installation folder already;
    // std::runtime_error when it is not ASCII, which hosts do not support, or when it or the
    // registry cannot be written.
    explicit RegisteredFolder(const std::wstring& folder);
    ~RegisteredFolder();
    RegisteredFolder(const RegisteredFolder&) = delete;
    RegisteredFolder& operator=(const RegisteredFolder&) = delete;

private:
    const peer::OwnHandle claim_;
    std::vector<std::wstring> created_{};
};

} // namespace zemlink
