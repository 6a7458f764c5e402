// A temporary installation folder of the Companion for one test.
#pragma once

#include <string>
#include <string_view>

namespace testing_support {

// Where the installation folder is registered.
enum class Registry {
    ofThisProcess, // visible only in this process: for tests that run the add-in in process
    ofTheUser      // visible to every process: for tests that start the programs
};

// A new folder with the Companion's subfolders, registered as the installation folder. The
// destructor removes the folder and the registry value.
class Installation {
public:
    explicit Installation(Registry registry = Registry::ofThisProcess);
    // Uses this path; for tests whose paths must be the same in every run.
    Installation(Registry registry, const std::wstring& root);
    ~Installation();
    Installation(const Installation&) = delete;
    Installation& operator=(const Installation&) = delete;

    const std::wstring& root() const { return root_; }
    // A path under the folder: "temp\\x" gives "<root>\temp\x".
    std::wstring path(const std::wstring& below) const { return root_ + L'\\' + below; }
    // The command file of a host process.
    std::wstring commandFile(unsigned long processId) const;
    // Copies a program to the path of the Companion's executable.
    void installCompanion(const std::wstring& program) const;
    // Makes `text` the whole standard input of this process.
    void feedStandardInput(std::string_view text) const;
    void endStandardInput() const { feedStandardInput(""); }

private:
    Registry registry_;
    std::wstring root_;
};

// Registers this folder as the installation folder, replacing an existing value.
void registerInstallation(const std::wstring& folder);

// Gives this process an empty HKEY_CURRENT_USER until it exits.
void useEmptyRegistry();

// The folder of the running test program, with a trailing separator.
std::wstring programFolder();

// Removes a folder and its contents.
void removeFolder(const std::wstring& path);

} // namespace testing_support
