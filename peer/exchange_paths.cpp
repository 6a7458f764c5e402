#include "peer/exchange_paths.h"

#include "peer/companion_files.h"
#include "peer/numbers.h"
#include "peer/wire_constants.h"

#include <algorithm>
#include <limits>

namespace peer {
namespace {

std::wstring tempFile(const std::wstring& folder, const wchar_t* start, const std::wstring& id,
                      const wchar_t* end)
{
    return folder + tempFolder + L'\\' + start + id + end;
}

// The number between the start and the end of a name; empty for any other name.
std::optional<std::uint32_t> processIn(std::wstring_view name, std::wstring_view start,
                                       std::wstring_view end)
{
    if (!name.starts_with(start) || !name.ends_with(end))
        return std::nullopt;
    name.remove_prefix(start.size());
    name.remove_suffix(end.size());
    const auto process = parseNumber(name, 0, std::numeric_limits<std::uint32_t>::max());
    return process ? std::optional(static_cast<std::uint32_t>(*process)) : std::nullopt;
}

} // namespace

std::wstring commandFilePath(const std::wstring& folder, std::uint32_t hostProcess)
{
    return tempFile(folder, commandFileStart, std::to_wstring(hostProcess), dataEnd);
}

std::wstring commandFilePattern(const std::wstring& folder)
{
    return tempFile(folder, commandFileStart, L"*", dataEnd);
}

std::optional<std::uint32_t> processOfCommandFile(std::wstring_view fileName)
{
    const auto process = processIn(fileName, commandFileStart, dataEnd);
    // No host writes leading zeros.
    const bool isExact =
        process && commandFileStart + std::to_wstring(*process) + dataEnd == fileName;
    return isExact ? process : std::nullopt;
}

std::wstring machineSettingsPath(const std::wstring& folder, std::int32_t requestId)
{
    return tempFile(folder, machineSettingsStart, std::to_wstring(requestId), textEnd);
}

std::wstring machineSettingsPattern(const std::wstring& folder)
{
    return tempFile(folder, machineSettingsStart, L"*", textEnd);
}

std::optional<std::int32_t> requestOfMachineSettings(std::wstring_view fileName)
{
    using Limits = std::numeric_limits<std::int32_t>;
    const std::wstring_view start = machineSettingsStart, end = textEnd;
    if (!fileName.starts_with(start) || !fileName.ends_with(end))
        return std::nullopt;
    fileName.remove_prefix(start.size());
    fileName.remove_suffix(std::min(end.size(), fileName.size()));
    const auto id = parseNumber(fileName, Limits::min(), Limits::max());
    const bool isExact = id && std::to_wstring(*id) == fileName;
    return isExact ? std::optional(static_cast<std::int32_t>(*id)) : std::nullopt;
}

std::wstring toolDataPath(const std::wstring& folder, std::int64_t requestId)
{
    return tempFile(folder, toolDataStart, std::to_wstring(requestId), textEnd);
}

std::wstring toolPicturePath(const std::wstring& folder, std::int32_t toolNumber)
{
    return tempFile(folder, toolPictureStart, std::to_wstring(toolNumber), pictureEnd);
}

std::wstring logPath(const std::wstring& folder)
{
    return folder + companionLog;
}

std::wstring debugLogPath(const std::wstring& folder)
{
    return folder + debugLog;
}

std::wstring workingCopiesPath(const std::wstring& folder)
{
    return folder + workingCopies;
}

std::wstring screenPicturePath(const std::wstring& folder)
{
    return folder + commitFolder + L'\\' + screenPictureName + pictureEnd;
}

std::wstring libraryFolder(const std::wstring& folder)
{
    return folder + librarySubfolder;
}

std::wstring libraryIndexPath(const std::wstring& folder)
{
    return libraryFolder(folder) + L"\\library.txt";
}

CommitPaths commitPaths(const std::wstring& folder, std::uint32_t process)
{
    const std::wstring id = std::to_wstring(process);
    return {tempFile(folder, commitFileStart, id, dataEnd),
            tempFile(folder, commitFileStart, id, closedCommitsEnd),
            tempFile(folder, commitFileStart, id, bookmarkEnd)};
}

std::wstring commitFilePattern(const std::wstring& folder)
{
    return tempFile(folder, commitFileStart, L"*", L"");
}

std::optional<std::uint32_t> processOfCommitFile(std::wstring_view fileName)
{
    for (const wchar_t* end : {dataEnd, closedCommitsEnd, bookmarkEnd})
        if (const auto process = processIn(fileName, commitFileStart, end))
            return process;
    return std::nullopt;
}

bool mayBeRemote(std::wstring_view path)
{
    return path.substr(0, 2).find_first_not_of(L"\\/") == std::wstring_view::npos &&
           path.size() >= 2;
}

std::wstring fileNameOf(const std::wstring& path)
{
    return path.substr(path.find_last_of(L"\\/") + 1);
}

} // namespace peer
