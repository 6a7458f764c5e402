// The setup program and its uninstaller at a simulated site, for the tests of both.
#pragma once

#include "packaging/machine_state.h"
#include "packaging/site.h"
#include "support/bytes.h"

#include <cstring>
#include <filesystem>
#include <gtest/gtest.h>

namespace testing_support {

inline constexpr DWORD done = 0;
inline constexpr DWORD failed = 2;
inline constexpr DWORD noHost = 3;
inline constexpr DWORD inUse = 4;
inline constexpr DWORD cannotWrite = 5;

// The lines of a log, which is UTF-16; none if it has no byte-order mark.
inline Lines logLines(const std::wstring& path)
{
    const std::string bytes = readBytes(path).value_or("");
    std::wstring text(bytes.size() / sizeof(wchar_t), L'\0');
    std::memcpy(text.data(), bytes.data(), text.size() * sizeof(wchar_t));
    if (!text.starts_with(L'\xFEFF'))
        return {};
    std::erase(text, L'\r');
    return linesOf(text.substr(1));
}

// The local time in the system's notation for dates and times.
inline std::wstring localTime(const wchar_t* dateFormat, const wchar_t* timeFormat)
{
    SYSTEMTIME now{};
    GetLocalTime(&now);
    wchar_t date[32] = L"";
    wchar_t time[32] = L"";
    GetDateFormatW(LOCALE_INVARIANT, 0, &now, dateFormat, date, 32);
    if (*timeFormat)
        GetTimeFormatW(LOCALE_INVARIANT, 0, &now, timeFormat, time, 32);
    return std::wstring(date) + time;
}

class Setup : public ::testing::Test {
protected:
    State files() const { return filesBelow(installation.root(), site.temporaryFolder); }
    static State entry() { return registryBelow(HKEY_LOCAL_MACHINE, entryKey); }
    void expectNothingInstalled() const
    {
        EXPECT_EQ(entry(), State());
        EXPECT_FALSE(std::filesystem::exists(site.hostFolder + L"\\chooks"));
        EXPECT_FALSE(std::filesystem::exists(installation.path(L"TORVA AS")));
    }
    std::optional<std::string> installed(const std::wstring& name) const
    {
        return readBytes(site.addInFolder + L'\\' + name);
    }

    // The logs that are written without the option /LOG.
    Lines setupLog() const { return logLines(site.temporaryFolder + L"\\torvapdm-setup.log"); }
    Lines uninstallLog() const
    {
        return logLines(site.temporaryFolder + L"\\torvapdm-uninstall.log");
    }

    Installation installation{Registry::ofTheUser};
    Site site{installation};
};

inline std::optional<std::string> packed(const std::wstring& name)
{
    return readBytes(packedFolder() + L'\\' + name);
}

// The relative paths of the files below a folder.
inline std::set<std::wstring> pathsBelow(const std::wstring& folder)
{
    std::set<std::wstring> paths;
    for (const auto& found : std::filesystem::recursive_directory_iterator(folder))
        paths.insert(found.path().lexically_relative(folder).wstring());
    return paths;
}

// The package's files in the add-in's folder, and the uninstaller.
inline std::set<std::wstring> installedPaths()
{
    std::set<std::wstring> paths = pathsBelow(packedFolder());
    paths.erase(L"torvapdm.dll");
    paths.insert(L"uninstall.exe");
    return paths;
}

} // namespace testing_support
