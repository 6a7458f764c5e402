#include "peer/exchange_paths.h"

#include "peer/numbers.h"

#include <limits>

namespace companion {
namespace {

constexpr std::wstring_view requestStart = L"torvapdm-";
constexpr std::wstring_view requestEnds[] = {L".dat", L".closed", L".taken"};

std::wstring commitRequestBase(const std::wstring& folder)
{
    return folder + L"\\temp\\" + std::wstring(requestStart);
}

} // namespace

std::wstring commandFilePath(const std::wstring& folder, std::uint32_t hostProcess)
{
    return folder + L"\\temp\\mastercam-" + std::to_wstring(hostProcess) + L".dat";
}

std::wstring machineSettingsPath(const std::wstring& folder, std::int32_t requestId)
{
    return folder + L"\\temp\\mcsettings-" + std::to_wstring(requestId) + L".txt";
}

std::wstring toolDataPath(const std::wstring& folder, std::int64_t requestId)
{
    return folder + L"\\temp\\tool-" + std::to_wstring(requestId) + L".txt";
}

std::wstring toolPicturePath(const std::wstring& folder, std::int32_t toolNumber)
{
    return folder + L"\\temp\\toolimage-" + std::to_wstring(toolNumber) + L".bmp";
}

std::wstring logPath(const std::wstring& folder)
{
    return folder + L"\\sys\\companion.log";
}

std::wstring workingCopiesPath(const std::wstring& folder)
{
    return folder + L"\\sys\\working-copies.txt";
}

std::wstring screenPicturePath(const std::wstring& folder)
{
    return folder + L"\\commit\\screendump.bmp";
}

std::wstring libraryFolder(const std::wstring& folder)
{
    return folder + L"\\library";
}

std::wstring libraryIndexPath(const std::wstring& folder)
{
    return libraryFolder(folder) + L"\\library.txt";
}

CommitRequestPaths commitRequestPaths(const std::wstring& folder, std::uint32_t process)
{
    const std::wstring base = commitRequestBase(folder) + std::to_wstring(process);
    return {base + L".dat", base + L".closed", base + L".taken"};
}

std::wstring commitRequestPattern(const std::wstring& folder)
{
    return commitRequestBase(folder) + L'*';
}

std::optional<std::uint32_t> processOfCommitRequest(std::wstring_view fileName)
{
    if (!fileName.starts_with(requestStart))
        return std::nullopt;
    fileName.remove_prefix(requestStart.size());
    for (const std::wstring_view end : requestEnds) {
        if (fileName.ends_with(end)) {
            fileName.remove_suffix(end.size());
            const auto process = readNumber(fileName, 0, std::numeric_limits<std::uint32_t>::max());
            return process ? std::optional(static_cast<std::uint32_t>(*process)) : std::nullopt;
        }
    }
    return std::nullopt;
}

bool mayBeElsewhere(std::wstring_view path)
{
    return path.substr(0, 2).find_first_not_of(L"\\/") == std::wstring_view::npos &&
           path.size() >= 2;
}

std::wstring fileNameOf(const std::wstring& path)
{
    return path.substr(path.find_last_of(L"\\/") + 1);
}

} // namespace companion
