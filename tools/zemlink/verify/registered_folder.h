// Registers another installation folder while programs are verified.
#pragma once

#include <string>

namespace zemlink {

// The folder is the current user's installation folder as long as the object exists; one object at
// a time. Its subfolders `cfg`, `commit`, `sys`, `temp` and `tmp` are created if they are missing.
//
// The earlier value is kept in the registry next to it, under the name `installation folder before
// zemlink verify`: if the process is killed, the next object restores that value first.
class RegisteredFolder {
public:
    // `folder` has no trailing backslash. Throws std::runtime_error when it is not ASCII, which
    // hosts do not support, or when the registry cannot be written.
    explicit RegisteredFolder(const std::wstring& folder);
    ~RegisteredFolder();
    RegisteredFolder(const RegisteredFolder&) = delete;
    RegisteredFolder& operator=(const RegisteredFolder&) = delete;
};

} // namespace zemlink
