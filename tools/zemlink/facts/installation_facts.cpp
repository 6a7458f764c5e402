#include "tools/zemlink/facts/installation_facts.h"

#include "peer/exchange_paths.h"
#include "peer/files.h"
#include "peer/text.h"
#include "peer/wire_constants.h"
#include "peer/working_copies_file.h"
#include "tools/zemlink/facts/access_list.h"
#include "tools/zemlink/facts/system.h"

namespace zemlink {
namespace {

constexpr wchar_t setupKey[] = LR"(Software\Microsoft\Windows\CurrentVersion\Uninstall\)"
                               L"TORVA ZEM add-in for Mastercam";

// Empty without such a value.
std::wstring setupText(const wchar_t* name)
{
    DWORD bytes = 0;
    constexpr DWORD flags = RRF_RT_REG_SZ;
    if (RegGetValueW(HKEY_LOCAL_MACHINE, setupKey, name, flags, nullptr, nullptr, &bytes) !=
        ERROR_SUCCESS)
        return {};
    std::wstring text(bytes / sizeof(wchar_t), L'\0');
    const LSTATUS status =
        RegGetValueW(HKEY_LOCAL_MACHINE, setupKey, name, flags, nullptr, text.data(), &bytes);
    return status == ERROR_SUCCESS ? std::wstring(text.c_str()) : std::wstring();
}

void addOpenPath(std::vector<OpenPath>& open, const std::wstring& path, Accounts accounts)
{
    OpenPath found{path, otherWriters(path, accounts)};
    if (!found.accounts.empty())
        open.push_back(std::move(found));
}

} // namespace

Result checkPath(const std::wstring& path, bool isFolderExpected)
{
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES)
        return resultOf(false, GetLastError());
    const bool isFolder = (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    return resultOf(isFolder == isFolderExpected,
                    isFolderExpected ? ERROR_DIRECTORY : ERROR_FILE_NOT_FOUND);
}

std::optional<SetupEntry> findSetup()
{
    SetupEntry entry{setupText(L"HostFolder")};
    if (entry.hostFolder.empty())
        return std::nullopt;
    entry.hostFolderFound = checkPath(entry.hostFolder, true);
    entry.addInFound = checkPath(entry.addIn(), false);
    return entry;
}

std::vector<OpenPath> findOpenPaths(const std::wstring& folder,
                                    const std::optional<SetupEntry>& setup)
{
    std::vector<OpenPath> open;
    addOpenPath(open, folder, Accounts::all);
    addOpenPath(open, folder + L'\\' + peer::companionProgram, Accounts::all);
    for (const wchar_t* below : {L"\\cfg", L"\\sys", L"\\temp", L"\\tmp", L"\\commit"})
        addOpenPath(open, folder + below, Accounts::groupsOfAllUsers);
    if (setup) {
        addOpenPath(open, setup->hostFolder, Accounts::all);
        addOpenPath(open, setup->hostFolder + L"\\chooks", Accounts::all);
        addOpenPath(open, setup->addIn(), Accounts::all);
    }
    return open;
}

std::vector<std::wstring> readWorkingCopies(const std::wstring& folder)
{
    std::vector<std::wstring> paths;
    const auto bytes = peer::readFile(peer::workingCopiesPath(folder));
    for (const auto& copy : peer::parseWorkingCopies(peer::fromUtf8(bytes.value_or(""))))
        if (copy && !copy->path.empty())
            paths.push_back(copy->path);
    return paths;
}

} // namespace zemlink
