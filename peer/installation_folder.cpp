#include "peer/installation_folder.h"

#include <windows.h>

namespace peer {
namespace {

// Quirk Q65: one character is dropped as the null terminator, whatever it is, as in the add-in.
std::wstring folderIn(const std::optional<RegistryValue>& value)
{
    const bool isText = value && (value->type == REG_SZ || value->type == REG_EXPAND_SZ);
    if (!isText || value->text.empty())
        return {};
    return value->text.substr(0, value->text.size() - 1);
}

std::optional<RegistryValue> readValue(HKEY key)
{
    DWORD type = 0, bytes = 0;
    if (RegQueryValueExW(key, registryValue, nullptr, &type, nullptr, &bytes) != ERROR_SUCCESS)
        return std::nullopt;
    RegistryValue value{type, std::wstring((bytes + 1) / sizeof(wchar_t), L'\0')};
    const LSTATUS status = RegQueryValueExW(key, registryValue, nullptr, nullptr,
                                            reinterpret_cast<BYTE*>(value.text.data()), &bytes);
    return status == ERROR_SUCCESS ? std::optional(value) : std::nullopt;
}

// In the 32-bit view, as hosts do. Windows has one key for both views.
std::optional<RegistryValue> readValue()
{
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, registryKey, 0, KEY_QUERY_VALUE | KEY_WOW64_32KEY, &key) !=
        ERROR_SUCCESS)
        return std::nullopt;
    std::optional<RegistryValue> value = readValue(key);
    RegCloseKey(key);
    return value;
}

} // namespace

Folder chooseFolder(const std::optional<RegistryValue>& value)
{
    const std::wstring folder = folderIn(value);
    return folder.empty() ? Folder{} : Folder{folder, FolderSource::registry};
}

Folder readInstallationFolder()
{
    return chooseFolder(readValue());
}

} // namespace peer
