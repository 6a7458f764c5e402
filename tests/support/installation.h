// An installation folder of the Companion for one test.
#pragma once

#include <string>
#include <string_view>

namespace testing_support {

// Where the installation folder is written down.
enum class Registry {
    ofThisProcess, // only this process sees it: for tests that hold the add-in themselves
    ofTheUser      // every process sees it: for tests that start the programs
};

// A fresh folder with the Companion's subfolders, registered as the installation folder. Removed,
// folder and registry value, when it goes out of scope.
class Installation {
public:
    explicit Installation(Registry registry = Registry::ofThisProcess);
    // At this place, for a test whose paths have to be the same in every run.
    Installation(Registry registry, const std::wstring& root);
    ~Installation();
    Installation(const Installation&) = delete;
    Installation& operator=(const Installation&) = delete;

    const std::wstring& root() const { return root_; }
    // A path under the folder: "temp\\x" gives "<root>\temp\x".
    std::wstring path(const std::wstring& below) const { return root_ + L'\\' + below; }
    // The command file of a host process.
    std::wstring commandFile(unsigned long processId) const;
    // Puts a program where the Companion's is expected.
    void installCompanion(const std::wstring& program) const;
    // Replaces this process's standard input by this text, and by nothing.
    void feedStandardInput(std::string_view text) const;
    void endStandardInput() const { feedStandardInput(""); }

private:
    Registry registry_;
    std::wstring root_;
};

// Writes this folder down as the installation folder, in place of an installation's own.
void registerInstallation(const std::wstring& folder);

// Gives this process an empty current-user registry for the rest of its life.
void useEmptyRegistry();

// The folder of the running test program, with a separator at its end.
std::wstring programFolder();

// Removes a folder and everything below it.
void removeFolder(const std::wstring& path);

} // namespace testing_support
