#include "companion/installation.h"

#include "formats/decimal.h"
#include "formats/wire_constants.h"
#include "platform/narrow_text.h"

#include <cwchar>

namespace torvapdm {

namespace {

constexpr wchar_t registryKey[] = L"SOFTWARE\\TORVA AS\\ZEM";
constexpr wchar_t registryValue[] = L"installation folder";
constexpr wchar_t defaultFolder[] = L"C:\\TORVA\\ZEM";

// Set before the registry is read, so that the look-up is never repeated, whatever it found.
bool isLookUpDone = false;

// Quirk Q12: the key's handle stays open for the life of the process.
HKEY openRegistryKey()
{
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
    // The size is taken to include a null terminator; fewer than two bytes count as an empty value.
    const DWORD lengthWithTerminator = (byteSize + 1) / 2;
    if (lengthWithTerminator <= 1)
        return;
    // Quirk Q13: when the second read fails, the folder stays the default, truncated or padded with
    // NULs to the new length.
    folder.resize(lengthWithTerminator - 1);
    const LSTATUS read = RegQueryValueExW(key, registryValue, nullptr, &type,
                                          reinterpret_cast<BYTE*>(folder.data()), &byteSize);
    // A value stored without its null terminator has just overwritten the string's own.
    folder.data()[folder.size()] = L'\0';
    // A value stored with more than one null terminator ends at the first.
    if (read == ERROR_SUCCESS)
        folder.resize(std::wcslen(folder.c_str()));
    if (folder.empty())
        folder = defaultFolder;
}

// The folder and the texts, one after the other. Allocates once: the tool export makes a path for
// each operation.
template <class... Texts>
std::wstring below(const std::wstring& folder, const Texts&... texts)
{
    std::wstring path;
    path.reserve((folder.size() + ... + texts.size()));
    path.append(folder);
    (path.append(texts), ...);
    return path;
}

std::wstring numbered(std::wstring_view prefix, std::int64_t number, std::wstring_view extension)
{
    return below(getInstallationFolder(), prefix, formatDecimal(number), extension);
}

} // namespace

const std::wstring& getInstallationFolder()
{
    static std::wstring folder;
    if (!isLookUpDone) {
        folder = defaultFolder; // if this runs out of memory, the next call tries again
        isLookUpDone = true;
        readFromRegistry(folder);
    }
    return folder;
}

std::wstring settingsFilePath()
{
    return below(getInstallationFolder(), settingsFile);
}

std::wstring companionProgramPath()
{
    return below(getInstallationFolder(), companionProgram);
}

std::wstring screenPicturePath()
{
    return below(getInstallationFolder(), screenPictureFile);
}

std::wstring commandFilePathOfThisProcess()
{
    return numbered(commandFilePrefix, GetCurrentProcessId(), L".dat");
}

std::wstring commitFilePath(std::uint32_t companionProcessId)
{
    return numbered(commitFilePrefix, companionProcessId, L".dat");
}

std::wstring machineSettingsPath(std::int32_t requestId)
{
    return numbered(machineSettingsPrefix, requestId, L".txt");
}

std::wstring toolDataPath(std::int32_t requestId)
{
    return numbered(toolDataPrefix, requestId, L".txt");
}

std::wstring ncQueuePath(std::int32_t requestId)
{
    return numbered(ncQueuePrefix, requestId, L".txt");
}

std::wstring toolPicturePath(std::int32_t imageId)
{
    return numbered(toolPicturePrefix, imageId, L".bmp");
}

std::wstring toolAndHolderPicturePath(std::int32_t toolNumber)
{
    return numbered(toolAndHolderPrefix, toolNumber, L".bmp");
}

std::wstring ftpPath(const std::wstring& folder, const std::wstring& file)
{
    return below(folder, ftpFolder) + file.substr(file.rfind(L'\\') + 1);
}

std::string debugLogPath()
{
    return truncateToBytes(below(getInstallationFolder(), debugLogFile));
}

} // namespace torvapdm
