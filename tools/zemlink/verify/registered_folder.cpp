#include "tools/zemlink/verify/registered_folder.h"

#include "peer/command_file.h"
#include "peer/installation_folder.h"
#include "peer/lines.h"
#include "peer/running_programs.h"
#include "peer/wire_constants.h"

#include <algorithm>
#include <cstring>
#include <windows.h>

namespace zemlink {
namespace {

constexpr wchar_t savedValue[] = L"installation folder before zemlink verify";
constexpr wchar_t verifiedValue[] = L"installation folder of zemlink verify";
constexpr wchar_t verificationMutex[] = L"zemlink verify";

// A value as it is in the registry. REG_NONE without data: the value does not exist.
struct RawValue {
    DWORD type = REG_NONE;
    std::vector<BYTE> data{};
};

class Key {
public:
    // In the 32-bit view, as hosts do.
    Key()
    {
        if (RegCreateKeyExW(HKEY_CURRENT_USER, peer::registryKey, 0, nullptr, 0,
                            KEY_QUERY_VALUE | KEY_SET_VALUE | KEY_WOW64_32KEY, nullptr, &key_,
                            nullptr) != ERROR_SUCCESS)
            throw std::runtime_error(
                "the registry key of the installation folder cannot be opened");
    }
    ~Key() { RegCloseKey(key_); }
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;

    bool has(const wchar_t* name) const
    {
        return RegQueryValueExW(key_, name, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
    }
    RawValue read(const wchar_t* name) const
    {
        RawValue value;
        DWORD bytes = 0;
        if (RegQueryValueExW(key_, name, nullptr, &value.type, nullptr, &bytes) != ERROR_SUCCESS)
            return {};
        value.data.resize(bytes);
        if (RegQueryValueExW(key_, name, nullptr, &value.type, value.data.data(), &bytes) !=
            ERROR_SUCCESS)
            return {};
        return value;
    }
    bool write(const wchar_t* name, const RawValue& value) const
    {
        return RegSetValueExW(key_, name, 0, value.type, value.data.data(),
                              static_cast<DWORD>(value.data.size())) == ERROR_SUCCESS;
    }
    void remove(const wchar_t* name) const { RegDeleteValueW(key_, name); }

private:
    HKEY key_ = nullptr;
};

// The folder without trailing backslashes; empty when the value is no text.
std::wstring folderIn(const RawValue& value)
{
    if (value.type != REG_SZ && value.type != REG_EXPAND_SZ)
        return {};
    std::wstring folder(value.data.size() / sizeof(wchar_t), L'\0');
    std::memcpy(folder.data(), value.data.data(), folder.size() * sizeof(wchar_t));
    folder.resize(std::min(folder.size(), folder.find(L'\0')));
    while (folder.ends_with(L'\\'))
        folder.pop_back();
    return folder;
}

// Also when the verified program has registered its folder in its own notation.
bool isVerifiedFolder(const Key& key)
{
    const std::wstring verified = folderIn(key.read(verifiedValue));
    return !verified.empty() &&
           peer::isSameIgnoringCase(folderIn(key.read(peer::registryValue)), verified);
}

// A folder that was registered since then stays. The saved value is removed last, so that an
// interruption before that repeats the restoration.
void restore(const Key& key)
{
    if (!key.has(savedValue))
        return;
    const RawValue saved = key.read(savedValue);
    const bool isVerified = isVerifiedFolder(key);
    if (isVerified && saved.type == REG_NONE)
        key.remove(peer::registryValue);
    else if (isVerified && !key.write(peer::registryValue, saved))
        return;
    key.remove(verifiedValue);
    key.remove(savedValue);
}

RawValue textValue(const std::wstring& text)
{
    const auto* bytes = reinterpret_cast<const BYTE*>(text.c_str());
    return {REG_SZ, {bytes, bytes + (text.size() + 1) * sizeof(wchar_t)}};
}

// Two of them would find each other's programs. The mutex exists as long as the handle; nobody
// waits for it.
peer::OwnHandle claimVerification()
{
    peer::OwnHandle mutex(CreateMutexW(nullptr, FALSE, verificationMutex));
    if (!mutex || GetLastError() == ERROR_ALREADY_EXISTS)
        throw VerificationIsRunning("another zemlink verify is running");
    return mutex;
}

void refuseRunningPrograms()
{
    if (peer::isInstanceRunning() || peer::findInstanceWindow() != nullptr)
        throw CompanionIsRunning("the Companion is running");
    if (!peer::findHosts().empty())
        throw HostIsRunning("a host with the add-in is running");
}

void refuseUnsuited(const std::wstring& folder)
{
    if (!peer::isPlainAscii(folder))
        throw std::runtime_error(
            "the folder has a character outside ASCII, which hosts do not support");
    std::wstring inUse = peer::readInstallationFolder().path;
    while (inUse.ends_with(L'\\'))
        inUse.pop_back();
    if (peer::isSameIgnoringCase(inUse, folder))
        throw FolderIsInUse("this is the installation folder that the user works with");
}

std::vector<std::wstring> createSubfolders(const std::wstring& folder)
{
    std::vector<std::wstring> created;
    for (const wchar_t* subfolder : {L"\\cfg", L"\\commit", L"\\sys", L"\\temp", L"\\tmp"}) {
        const std::wstring path = folder + subfolder;
        if (CreateDirectoryW(path.c_str(), nullptr))
            created.push_back(path);
        else if (GetLastError() != ERROR_ALREADY_EXISTS)
            throw std::runtime_error("the folder cannot be written");
    }
    return created;
}

} // namespace

RegisteredFolder::RegisteredFolder(const std::wstring& folder) : claim_(claimVerification())
{
    refuseRunningPrograms();
    const Key key;
    restore(key);
    refuseUnsuited(folder);
    CreateDirectoryW(folder.c_str(), nullptr);
    created_ = createSubfolders(folder);
    if (!key.write(savedValue, key.read(peer::registryValue)) ||
        !key.write(verifiedValue, textValue(folder)) ||
        !key.write(peer::registryValue, textValue(folder)))
        throw std::runtime_error("the installation folder cannot be registered");
}

RegisteredFolder::~RegisteredFolder()
{
    for (const std::wstring& path : created_)
        RemoveDirectoryW(path.c_str());
    try {
        restore(Key());
    } catch (const std::exception&) {
        return; // the next object tries again
    }
}

} // namespace zemlink
