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

std::optional<RegistryValue> readView(REGSAM view)
{
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, registryKey, 0, KEY_QUERY_VALUE | view, &key) !=
        ERROR_SUCCESS)
        return std::nullopt;
    std::optional<RegistryValue> value = readValue(key);
    RegCloseKey(key);
    return value;
}

} // namespace

Folder chooseFolder(const std::optional<RegistryValue>& view32,
                    const std::optional<RegistryValue>& view64)
{
    const std::wstring used = folderIn(view32);
    const std::wstring other = folderIn(view64);
    Folder folder;
    if (!used.empty()) {
        folder.path = used;
        folder.source = other == used ? FolderSource::registry : FolderSource::view32Only;
    }
    if (!other.empty() && other != folder.path)
        folder.otherView = other;
    return folder;
}

Folder readInstallationFolder()
{
    return chooseFolder(readView(KEY_WOW64_32KEY), readView(KEY_WOW64_64KEY));
}

} // namespace peer
