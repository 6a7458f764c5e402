// A site's machine: a folder of the host, a place for the add-in, and the setup programs that
// were packed with the tests.
#pragma once

#include "support/installation.h"

#include <optional>
#include <string>
#include <windows.h>

namespace testing_support {

// What was packed: the folder, and the setup programs of this version and of an earlier one that
// has other pages.
std::wstring packedFolder();
std::wstring setupProgram();
std::wstring earlierSetupProgram();

class Site {
public:
    // Lays out the host's folder below the installation folder. What runs from then on has its
    // temporary files in another folder there.
    // An entry among the installed programs goes, now and in the end.
    explicit Site(const Installation& installation);
    ~Site();
    Site(const Site&) = delete;
    Site& operator=(const Site&) = delete;

    const std::wstring temporaryFolder, hostFolder, addInFolder;
    std::wstring library() const { return hostFolder + L"\\chooks\\torvapdm.dll"; }

    // Runs a setup program without windows, for this host's folder; gives its exit code.
    std::optional<DWORD> setUp(const std::wstring& program, const std::wstring& host) const;
    std::optional<DWORD> setUp() const { return setUp(setupProgram(), hostFolder); }
    // Runs the uninstaller in its place, where its outcome is seen and it cannot go itself.
    std::optional<DWORD> uninstallInPlace() const;
    // Uninstalls as the system does; true once the entry and the uninstaller have gone.
    bool uninstall() const;
};

// Lays out a folder of the host: its program and its libraries.
void layOutHost(const std::wstring& folder);

// The entry among the installed programs, and a text in it; empty when there is none.
extern const wchar_t entryKey[];
std::wstring entryText(const wchar_t* name);

} // namespace testing_support
