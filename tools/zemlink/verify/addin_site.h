// The folders in which an add-in is verified, below the user's temporary folder.
#pragma once

#include "tools/zemlink/verify/registered_folder.h"

#include <cstdint>
#include <optional>
#include <string>

namespace zemlink {

// A folder that is removed with everything in it.
class TemporaryFolder {
public:
    // Named after this process. Throws std::runtime_error.
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::wstring& path() const { return path_; } // without a trailing backslash

private:
    std::wstring path_;
};

// An installation folder, which is registered meanwhile, with two folders of parts.
class AddInSite {
public:
    // Throws RegisteredFolder's errors.
    AddInSite();

    const std::wstring& folder() const { return folder_; } // the installation folder
    // Paths of files in the installation folder, and next to it.
    std::wstring inside(const std::wstring& name) const { return folder_ + L"\\work\\" + name; }
    std::wstring outside(const std::wstring& name) const
    {
        return temporary_.path() + L"\\outside\\" + name;
    }
    std::wstring ownFile(const std::wstring& name) const
    {
        return temporary_.path() + L'\\' + name;
    }

    // Replaces the settings file.
    void writeSettings(const std::string& text) const;
    // The machine settings of a request, as the Companion writes them.
    void writeMachineSettings(std::int32_t id, std::int32_t ncPath,
                              const std::string& machine) const;

private:
    TemporaryFolder temporary_{};
    std::wstring folder_;
    RegisteredFolder registered_;
};

// Writes the file; throws std::runtime_error when that fails.
void putFile(const std::wstring& path, const std::string& bytes);

} // namespace zemlink
