#include "standin/companion/app/installation.h"

#include "peer/command_file.h"
#include "peer/wire_constants.h"

#include <windows.h>

namespace companion {
namespace {

constexpr const wchar_t* subfolders[] = {L"cfg", L"sys", L"temp", L"tmp", L"commit", L"library"};

// Empty when the disk keeps no short names.
std::wstring shortForm(const std::wstring& path)
{
    const DWORD needed = GetShortPathNameW(path.c_str(), nullptr, 0);
    std::wstring result(needed, L'\0');
    result.resize(GetShortPathNameW(path.c_str(), result.data(), needed));
    return result;
}

} // namespace

std::wstring installationFolder()
{
    std::wstring path(MAX_PATH, L'\0');
    DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    while (length == path.size()) {
        path.resize(path.size() * 2);
        length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    }
    path.resize(length);
    return path.substr(0, path.find_last_of(L'\\'));
}

void createSubfolders(const std::wstring& folder)
{
    for (const wchar_t* subfolder : subfolders)
        CreateDirectoryW((folder + L'\\' + subfolder).c_str(), nullptr);
}

std::wstring workFolder(const std::wstring& folder)
{
    std::wstring work = folder + L"\\work";
    CreateDirectoryW(work.c_str(), nullptr);
    if (peer::isPlainAscii(work))
        return work;
    const std::wstring shortWork = shortForm(work);
    return shortWork.empty() ? work : shortWork;
}

bool registerFolder(const std::wstring& folder)
{
    // Hosts ask for the 32-bit view.
    HKEY key = nullptr;
    if (RegCreateKeyExW(HKEY_CURRENT_USER, peer::registryKey, 0, nullptr, 0,
                        KEY_SET_VALUE | KEY_WOW64_32KEY, nullptr, &key, nullptr) != ERROR_SUCCESS)
        return false;
    const auto bytes = static_cast<DWORD>((folder.size() + 1) * sizeof(wchar_t));
    const LSTATUS status = RegSetValueExW(key, peer::registryValue, 0, REG_SZ,
                                          reinterpret_cast<const BYTE*>(folder.c_str()), bytes);
    RegCloseKey(key);
    return status == ERROR_SUCCESS;
}

} // namespace companion
