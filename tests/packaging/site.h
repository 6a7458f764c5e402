// A simulated site: a host folder, a folder for the add-in, and the setup programs packaged with
// the tests.
#pragma once

#include "support/installation.h"
#include "support/processes.h"

#include <filesystem>
#include <optional>
#include <string>
#include <windows.h>

namespace testing_support {

// A path below the folder of the packages.
inline std::wstring packedPath(const std::wstring& below)
{
    return std::filesystem::path(programFolder() + L"..\\" + below).lexically_normal().wstring();
}

// The packaged folder, and the setup programs of this version and of an earlier one with different
// pages.
inline std::wstring packedFolder()
{
    return packedPath(L"package\\torvapdm-" VERSION_TEXT "-stand-in-host");
}
inline std::wstring setupProgram()
{
    return packedFolder() + L"-setup.exe";
}
inline std::wstring earlierSetupProgram()
{
    return packedPath(L"earlier-package\\torvapdm-" EARLIER_VERSION_TEXT
                      "-stand-in-host-setup.exe");
}
// That of the last release, kept as it was.
inline std::wstring releasedSetupProgram()
{
    return packedPath(L"released\\setup.exe");
}

// The key in the list of installed programs, and a string value in it; empty if there is none.
inline constexpr wchar_t entryKey[] =
    L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\TORVA ZEM add-in for Mastercam";
inline std::wstring entryText(const wchar_t* name)
{
    wchar_t value[1024] = L"";
    DWORD size = sizeof value;
    RegGetValueW(HKEY_LOCAL_MACHINE, entryKey, name, RRF_RT_REG_SZ, nullptr, value, &size);
    return value;
}

// Creates a host folder with the host's program and libraries.
inline void layOutHost(const std::wstring& folder)
{
    std::filesystem::create_directories(folder);
    for (const wchar_t* name :
         {L"Mastercam.exe", L"Mastercam.dll", L"MCCore.dll", L"MCMill.dll", L"MCMachineDef.dll"})
        std::filesystem::copy_file(programFolder() + name, folder + L'\\' + name);
}

class Site {
public:
    // Creates the host's folder below the installation folder. Programs started from then on use
    // another folder there for temporary files. The constructor and the destructor remove the entry
    // in the list of installed programs.
    explicit Site(const Installation& installation)
        : temporaryFolder(installation.path(L"temporary")),
          hostFolder(installation.path(L"Mastercam 1")),
          addInFolder(installation.path(L"TORVA AS\\ZEM add-in"))
    {
        std::filesystem::create_directory(temporaryFolder);
        SetEnvironmentVariableW(L"TMP", temporaryFolder.c_str());
        layOutHost(hostFolder);
        RegDeleteTreeW(HKEY_LOCAL_MACHINE, entryKey);
    }
    ~Site() { RegDeleteTreeW(HKEY_LOCAL_MACHINE, entryKey); }
    Site(const Site&) = delete;
    Site& operator=(const Site&) = delete;

    const std::wstring temporaryFolder, hostFolder, addInFolder;
    std::wstring library() const { return hostFolder + L"\\chooks\\torvapdm.dll"; }

    // Runs a setup program silently for this host folder; returns its exit code.
    std::optional<DWORD> setUp(const std::wstring& program, const std::wstring& host) const
    {
        return Process(quoted(program) + L" /S /HOST=" + quoted(host) + L" /D=" + addInFolder)
            .waitForExit();
    }
    std::optional<DWORD> setUp() const { return setUp(setupProgram(), hostFolder); }
    // Runs the uninstaller in place, so that its exit code is available; it cannot delete itself.
    std::optional<DWORD> uninstallInPlace() const
    {
        return Process(quoted(addInFolder + L"\\uninstall.exe") + L" /S _?=" + addInFolder)
            .waitForExit();
    }
    // Uninstalls as Windows does; true once the entry and the uninstaller have been removed.
    bool uninstall() const
    {
        Process(entryText(L"QuietUninstallString")).waitForExit();
        return waitUntil([this] {
            return entryText(L"DisplayName").empty() &&
                   !std::filesystem::exists(addInFolder + L"\\uninstall.exe");
        });
    }
};

} // namespace testing_support
