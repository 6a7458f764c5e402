#include "tools/zemlink/facts/access_list.h"

#include "peer/handle.h"

#include <algorithm>
#include <aclapi.h>
#include <memory>
#include <sddl.h>

namespace zemlink {
namespace {

// For a folder the first two mean to create files and folders in it.
constexpr ACCESS_MASK writing = FILE_WRITE_DATA | FILE_APPEND_DATA | FILE_DELETE_CHILD | DELETE |
                                WRITE_DAC | WRITE_OWNER | GENERIC_WRITE | GENERIC_ALL;

constexpr WELL_KNOWN_SID_TYPE trusted[] = {
    WinLocalSystemSid,
    WinBuiltinAdministratorsSid,
    WinCreatorOwnerSid,
    WinCreatorOwnerRightsSid,
    WinAccountAdministratorSid,
    WinAccountDomainAdminsSid,
    WinAccountEnterpriseAdminsSid,
};
constexpr wchar_t installerOfWindows[] =
    L"S-1-5-80-956008885-3418522649-1831038044-1853292631-2271478464";

constexpr WELL_KNOWN_SID_TYPE allUsers[] = {
    WinWorldSid,     WinAuthenticatedUserSid, WinBuiltinUsersSid, WinBuiltinGuestsSid,
    WinAnonymousSid, WinInteractiveSid,       WinNetworkSid,      WinAccountDomainUsersSid,
};

struct LocalMemory {
    void operator()(void* memory) const { LocalFree(memory); }
};
using OwnDescriptor = std::unique_ptr<void, LocalMemory>;
using OwnText = std::unique_ptr<wchar_t, LocalMemory>;

template <size_t N>
bool isAnyOf(PSID account, const WELL_KNOWN_SID_TYPE (&types)[N])
{
    return std::ranges::any_of(
        types, [&](WELL_KNOWN_SID_TYPE type) { return IsWellKnownSid(account, type); });
}

std::wstring numberText(PSID account)
{
    wchar_t* text = nullptr;
    if (!ConvertSidToStringSidW(account, &text))
        return {};
    const OwnText owner(text);
    return text;
}

bool isUser(PSID account)
{
    HANDLE opened = nullptr;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &opened))
        return false;
    const peer::OwnHandle token(opened);
    alignas(TOKEN_USER) char user[sizeof(TOKEN_USER) + SECURITY_MAX_SID_SIZE];
    DWORD size = sizeof user;
    return GetTokenInformation(token.get(), TokenUser, user, size, &size) &&
           EqualSid(reinterpret_cast<const TOKEN_USER*>(user)->User.Sid, account);
}

bool isTrusted(PSID account)
{
    return isAnyOf(account, trusted) || numberText(account) == installerOfWindows ||
           isUser(account);
}

// Its number where the system knows no name.
std::wstring nameOf(PSID account)
{
    wchar_t name[256] = L"", domain[256] = L"";
    DWORD nameSize = 256, domainSize = 256;
    SID_NAME_USE use{};
    if (LookupAccountSidW(nullptr, account, name, &nameSize, domain, &domainSize, &use))
        return name;
    return numberText(account);
}

// An entry of the list that allows or denies something for the file or folder itself.
struct Entry {
    PSID account = nullptr;
    ACCESS_MASK mask = 0;
    bool isAllowing = false;
};

std::vector<Entry> entriesOf(PACL list)
{
    std::vector<Entry> entries;
    for (DWORD i = 0; i < list->AceCount; ++i) {
        void* found = nullptr;
        if (!GetAce(list, i, &found))
            continue;
        auto* entry = static_cast<ACCESS_ALLOWED_ACE*>(found); // the other kind has the same form
        const bool isAllowing = entry->Header.AceType == ACCESS_ALLOWED_ACE_TYPE;
        const bool isDenying = entry->Header.AceType == ACCESS_DENIED_ACE_TYPE;
        if ((isAllowing || isDenying) && (entry->Header.AceFlags & INHERIT_ONLY_ACE) == 0)
            entries.push_back({&entry->SidStart, entry->Mask, isAllowing});
    }
    return entries;
}

// What an entry allows and no earlier one denies the same account.
ACCESS_MASK allowedBy(const std::vector<Entry>& entries, size_t place)
{
    ACCESS_MASK mask = entries[place].isAllowing ? entries[place].mask : 0;
    for (size_t i = 0; i < place; ++i)
        if (!entries[i].isAllowing && EqualSid(entries[i].account, entries[place].account))
            mask &= ~entries[i].mask;
    return mask;
}

} // namespace

std::vector<std::wstring> otherWriters(const std::wstring& path, Accounts accounts)
{
    PACL list = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    std::wstring name = path; // some headers declare it as changed
    if (GetNamedSecurityInfoW(name.data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr,
                              nullptr, &list, nullptr, &descriptor) != ERROR_SUCCESS)
        return {};
    const OwnDescriptor owner(descriptor);
    if (!list)
        return {L"everyone: it has no access list"};
    std::vector<std::wstring> writers;
    const std::vector<Entry> entries = entriesOf(list);
    for (size_t i = 0; i < entries.size(); ++i) {
        const PSID account = entries[i].account;
        const bool isMeant =
            accounts == Accounts::all ? !isTrusted(account) : isAnyOf(account, allUsers);
        if ((allowedBy(entries, i) & writing) == 0 || !isMeant)
            continue;
        const std::wstring writer = nameOf(account);
        if (std::ranges::find(writers, writer) == writers.end())
            writers.push_back(writer);
    }
    return writers;
}

} // namespace zemlink
