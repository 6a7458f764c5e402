#include "decisions/exchangepaths.h"

namespace companion {

std::wstring commandFilePath(const std::wstring& folder, std::uint32_t hostProcess)
{
    return folder + L"\\temp\\mastercam-" + std::to_wstring(hostProcess) + L".dat";
}

std::wstring machineSettingsPath(const std::wstring& folder, std::int32_t requestId)
{
    return folder + L"\\temp\\mcsettings-" + std::to_wstring(requestId) + L".txt";
}

std::wstring logPath(const std::wstring& folder)
{
    return folder + L"\\sys\\companion.log";
}

std::wstring libraryFolder(const std::wstring& folder)
{
    return folder + L"\\library";
}

std::wstring libraryIndexPath(const std::wstring& folder)
{
    return libraryFolder(folder) + L"\\library.txt";
}

std::wstring fileNameOf(const std::wstring& path)
{
    return path.substr(path.find_last_of(L"\\/") + 1);
}

} // namespace companion
