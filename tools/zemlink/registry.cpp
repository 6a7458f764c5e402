#include "tools/zemlink/registry.h"

#include "peer/wire_constants.h"

#include <windows.h>

namespace zemlink {
namespace {

std::optional<RegistryValue> readOpened(HKEY key)
{
    DWORD type = 0, bytes = 0;
    if (RegQueryValueExW(key, companion::registryValue, nullptr, &type, nullptr, &bytes) !=
        ERROR_SUCCESS)
        return std::nullopt;
    RegistryValue value{type, std::wstring((bytes + 1) / sizeof(wchar_t), L'\0')};
    const LSTATUS status = RegQueryValueExW(key, companion::registryValue, nullptr, nullptr,
                                            reinterpret_cast<BYTE*>(value.text.data()), &bytes);
    return status == ERROR_SUCCESS ? std::optional(value) : std::nullopt;
}

std::optional<RegistryValue> readView(REGSAM view)
{
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, companion::registryKey, 0, KEY_QUERY_VALUE | view, &key) !=
        ERROR_SUCCESS)
        return std::nullopt;
    std::optional<RegistryValue> value = readOpened(key);
    RegCloseKey(key);
    return value;
}

} // namespace

Folder registeredFolder()
{
    return folderOf(readView(KEY_WOW64_32KEY), readView(KEY_WOW64_64KEY));
}

} // namespace zemlink
