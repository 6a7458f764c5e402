// A simulated site: a host folder, a folder for the add-in, and the setup programs packaged with
// the tests.
#pragma once

#include "support/installation.h"

#include <optional>
#include <string>
#include <windows.h>

namespace testing_support {

// The packaged folder, and the setup programs of this version and of an earlier one with different
// pages.
std::wstring packedFolder();
std::wstring setupProgram();
std::wstring earlierSetupProgram();

class Site {
public:
    // Creates the host's folder below the installation folder. Programs started from then on use
    // another folder there for temporary files. The constructor and the destructor remove the entry
    // in the list of installed programs.
    explicit Site(const Installation& installation);
    ~Site();
    Site(const Site&) = delete;
    Site& operator=(const Site&) = delete;

    const std::wstring temporaryFolder, hostFolder, addInFolder;
    std::wstring library() const { return hostFolder + L"\\chooks\\torvapdm.dll"; }

    // Runs a setup program silently for this host folder; returns its exit code.
    std::optional<DWORD> setUp(const std::wstring& program, const std::wstring& host) const;
    std::optional<DWORD> setUp() const { return setUp(setupProgram(), hostFolder); }
    // Runs the uninstaller in place, so that its exit code is available; it cannot delete itself.
    std::optional<DWORD> uninstallInPlace() const;
    // Uninstalls as Windows does; true once the entry and the uninstaller have been removed.
    bool uninstall() const;
};

// Creates a host folder with the host's program and libraries.
void layOutHost(const std::wstring& folder);

// The key in the list of installed programs, and a string value in it; empty if there is none.
extern const wchar_t entryKey[];
std::wstring entryText(const wchar_t* name);

} // namespace testing_support
