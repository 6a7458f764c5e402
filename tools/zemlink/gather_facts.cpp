#include "tools/zemlink/gather_facts.h"

#include "peer/exchange_paths.h"
#include "peer/numbers.h"
#include "peer/files.h"
#include "peer/handle.h"
#include "tools/zemlink/commit_facts.h"
#include "tools/zemlink/companion_facts.h"
#include "tools/zemlink/port_facts.h"
#include "tools/zemlink/processes.h"
#include "tools/zemlink/registry.h"
#include "tools/zemlink/system_error.h"

#include <algorithm>
#include <limits>

namespace zemlink {
namespace {

Result lookAt(const std::wstring& path, bool isFolderExpected)
{
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES)
        return resultOf(false, GetLastError());
    const bool isFolder = (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    return resultOf(isFolder == isFolderExpected,
                    isFolderExpected ? ERROR_DIRECTORY : ERROR_FILE_NOT_FOUND);
}

Result tryToMakeFile(const std::wstring& folder)
{
    const std::wstring path =
        folder + L"\\zemlink-" + std::to_wstring(GetCurrentProcessId()) + L".tmp";
    const companion::OwnHandle file = companion::ownFile(
        CreateFileW(path.c_str(), GENERIC_WRITE | DELETE, 0, nullptr, CREATE_NEW,
                    FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr));
    const DWORD error = GetLastError();
    return resultOf(file != nullptr, error);
}

// The process of `mastercam-4711.dat`; empty for any other name.
std::optional<std::uint32_t> processOfCommandFile(std::wstring_view name)
{
    constexpr std::wstring_view start = L"mastercam-", end = L".dat";
    if (!name.starts_with(start) || !name.ends_with(end))
        return std::nullopt;
    name.remove_prefix(start.size());
    name.remove_suffix(end.size());
    const auto number = companion::readNumber(name, 0, std::numeric_limits<std::uint32_t>::max());
    const bool isHosts =
        number && std::to_wstring(*number) == name; // no host writes zeros in front
    return isHosts ? std::optional(static_cast<std::uint32_t>(*number)) : std::nullopt;
}

std::vector<CommandFile> findCommandFiles(const std::wstring& folder)
{
    std::vector<CommandFile> files;
    WIN32_FIND_DATAW found{};
    const HANDLE search = FindFirstFileW((folder + L"\\temp\\mastercam-*.dat").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE)
        return files;
    do {
        const bool isFolder = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        if (const auto process = processOfCommandFile(found.cFileName); process && !isFolder) {
            const std::wstring path = folder + L"\\temp\\" + found.cFileName;
            files.push_back({path, *process, companion::fileSize(path), isRunning(*process)});
        }
    } while (FindNextFileW(search, &found));
    FindClose(search);
    std::sort(files.begin(), files.end(),
              [](const CommandFile& a, const CommandFile& b) { return a.process < b.process; });
    return files;
}

} // namespace

Facts gatherFacts(Temp temp)
{
    Facts facts;
    facts.folder = registeredFolder();
    const std::wstring& folder = facts.folder.path;
    facts.folderThere = lookAt(folder, true);
    facts.commitThere = lookAt(folder + L"\\commit", true);
    facts.programThere = lookAt(folder + L"\\TORVA-ZEM.exe", false);
    if (temp == Temp::isTried)
        facts.tempWritable = tryToMakeFile(folder + L"\\temp");
    facts.settings = companion::readFile(folder + L"\\cfg\\settings.ini");
    facts.companion = lookAtCompanion();
    facts.hosts = companion::findHosts();
    facts.commandFiles = findCommandFiles(folder);
    facts.commitFiles = findCommitFiles(folder);
    facts.port = lookAtPort();
    return facts;
}

} // namespace zemlink
