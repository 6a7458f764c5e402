#include "companion/installation.h"

#include "framework/framework.h"

#include <cwchar>

namespace torvapdm {

namespace {

constexpr wchar_t registryKey[] = L"SOFTWARE\\TORVA AS\\ZEM";
constexpr wchar_t registryValue[] = L"installation folder";
constexpr wchar_t defaultFolder[] = L"C:\\TORVA\\ZEM";

// Set before the registry is read, so that the look-up never repeats, whatever it found.
bool lookedUp = false;

HKEY openRegistryKey()
{
    // Deliberate: the key handle is never closed, one for each process. One would expect a
    // RegCloseKey; the handle is left to the process's end.
    HKEY key = nullptr;
    const LSTATUS status = RegCreateKeyExW(HKEY_CURRENT_USER, registryKey, 0, nullptr, 0,
                                           KEY_READ | KEY_WOW64_32KEY, nullptr, &key, nullptr);
    return status == ERROR_SUCCESS ? key : nullptr;
}

void readFromRegistry(std::wstring& folder)
{
    const HKEY key = openRegistryKey();
    if (!key)
        return;
    DWORD type = 0;
    DWORD byteSize = 0;
    if (RegQueryValueExW(key, registryValue, nullptr, &type, nullptr, &byteSize) != ERROR_SUCCESS)
        return;
    if (type != REG_SZ && type != REG_EXPAND_SZ)
        return;
    // Every value is counted as if it ended in a zero; one of fewer than two bytes counts as empty.
    const DWORD lengthWithZero = (byteSize + 1) / 2;
    if (lengthWithZero <= 1)
        return;
    // Deliberate: a failed second reading leaves the resized text, which is the default folder cut
    // or followed by zeros. One would expect the default; nobody relies on either, and it is kept.
    folder.resize(lengthWithZero - 1);
    const LSTATUS read = RegQueryValueExW(key, registryValue, nullptr, &type,
                                          reinterpret_cast<BYTE*>(folder.data()), &byteSize);
    // A value stored without its zero has just overwritten the text's own.
    folder.data()[folder.size()] = L'\0';
    // A value stored with more than one zero ends at the first.
    if (read == ERROR_SUCCESS)
        folder.resize(std::wcslen(folder.c_str()));
    if (folder.empty())
        folder = defaultFolder;
}

} // namespace

std::wstring getInstallationFolder()
{
    static std::wstring folder;
    if (!lookedUp) {
        folder = defaultFolder; // may run out of memory, and is tried again then
        lookedUp = true;
        readFromRegistry(folder);
    }
    return folder;
}

} // namespace torvapdm
