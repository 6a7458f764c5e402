#include "packaging/site.h"

#include "support/processes.h"
#include "support/waiting.h"

#include <filesystem>

namespace testing_support {

const wchar_t entryKey[] = L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\"
                           L"TORVA ZEM add-in for Mastercam";

namespace {

std::wstring packed(const std::wstring& below)
{
    return std::filesystem::path(programFolder() + L"..\\" + below).lexically_normal().wstring();
}

std::optional<DWORD> run(const std::wstring& commandLine)
{
    return Process(commandLine).waitForExit();
}

} // namespace

std::wstring packedFolder()
{
    return packed(L"package\\torvapdm-" VERSION_TEXT);
}

std::wstring setupProgram()
{
    return packed(L"package\\torvapdm-" VERSION_TEXT "-setup.exe");
}

std::wstring earlierSetupProgram()
{
    return packed(L"earlier-package\\torvapdm-" EARLIER_VERSION_TEXT "-setup.exe");
}

Site::Site(const Installation& installation)
    : temporaryFolder(installation.path(L"temporary")),
      hostFolder(installation.path(L"Mastercam 1")),
      addInFolder(installation.path(L"TORVA AS\\ZEM add-in"))
{
    std::filesystem::create_directory(temporaryFolder);
    SetEnvironmentVariableW(L"TMP", temporaryFolder.c_str());
    layOutHost(hostFolder);
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, entryKey);
}

Site::~Site()
{
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, entryKey);
}

std::optional<DWORD> Site::setUp(const std::wstring& program, const std::wstring& host) const
{
    return run(quoted(program) + L" /S /HOST=" + quoted(host) + L" /D=" + addInFolder);
}

std::optional<DWORD> Site::uninstallInPlace() const
{
    return run(quoted(addInFolder + L"\\uninstall.exe") + L" /S _?=" + addInFolder);
}

bool Site::uninstall() const
{
    run(entryText(L"QuietUninstallString"));
    return waitUntil([this] {
        return entryText(L"DisplayName").empty() &&
               !std::filesystem::exists(addInFolder + L"\\uninstall.exe");
    });
}

void layOutHost(const std::wstring& folder)
{
    std::filesystem::create_directories(folder);
    for (const wchar_t* name :
         {L"Mastercam.exe", L"Mastercam.dll", L"MCCore.dll", L"MCMill.dll", L"MCMachineDef.dll"})
        std::filesystem::copy_file(programFolder() + name, folder + L'\\' + name);
}

std::wstring entryText(const wchar_t* name)
{
    wchar_t value[1024] = L"";
    DWORD size = sizeof value;
    RegGetValueW(HKEY_LOCAL_MACHINE, entryKey, name, RRF_RT_REG_SZ, nullptr, value, &size);
    return value;
}

} // namespace testing_support
