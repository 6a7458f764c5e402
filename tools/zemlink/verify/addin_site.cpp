#include "tools/zemlink/verify/addin_site.h"

#include "peer/command_file.h"
#include "peer/exchange_paths.h"
#include "peer/files.h"
#include "peer/machine_settings.h"
#include "peer/numbers.h"
#include "peer/text.h"
#include "peer/wire_constants.h"

#include <filesystem>
#include <stdexcept>
#include <windows.h>

namespace zemlink {
namespace {

// In ASCII where the system has such a name for it, because hosts support no other.
std::wstring usersTemporaryFolder()
{
    wchar_t path[MAX_PATH + 1] = L"";
    GetTempPathW(MAX_PATH + 1, path);
    wchar_t shortPath[MAX_PATH + 1] = L"";
    if (!peer::isPlainAscii(path) && GetShortPathNameW(path, shortPath, MAX_PATH + 1) != 0)
        return shortPath;
    return path;
}

constexpr std::wstring_view folderStart = L"zemlink verify "; // the process follows

bool isOfVerification(const std::wstring& name)
{
    return name.starts_with(folderStart) &&
           peer::parsePrintedNumber(peer::toUtf8(name.substr(folderStart.size())), 1, MAXDWORD);
}

// Those of verifications that were killed: no other one is running.
void removeLeftFolders(const std::wstring& own)
{
    std::error_code error;
    for (const auto& each : std::filesystem::directory_iterator(usersTemporaryFolder(), error))
        if (isOfVerification(each.path().filename().native()) && each.path() != own)
            std::filesystem::remove_all(each.path(), error);
}

} // namespace

TemporaryFolder::TemporaryFolder()
    : path_(usersTemporaryFolder() + std::wstring(folderStart) +
            std::to_wstring(GetCurrentProcessId()))
{
    std::error_code error;
    std::filesystem::remove_all(path_, error); // of a killed process with the same id
    if (!CreateDirectoryW(path_.c_str(), nullptr))
        throw std::runtime_error(peer::toUtf8(path_) + " cannot be created");
}

// A program that has just ended can keep its files for a moment.
TemporaryFolder::~TemporaryFolder()
{
    constexpr int tries = 100;
    constexpr DWORD pauseMs = 20;
    std::error_code error;
    for (int i = 0; i < tries; ++i) {
        std::filesystem::remove_all(path_, error);
        if (GetFileAttributesW(path_.c_str()) == INVALID_FILE_ATTRIBUTES)
            return;
        Sleep(pauseMs);
    }
}

AddInSite::AddInSite() : folder_(temporary_.path() + L"\\zem"), registered_(folder_)
{
    removeLeftFolders(temporary_.path());
    for (const std::wstring& each : {inside(L""), outside(L""), folder_ + L"\\nc"})
        CreateDirectoryW(each.c_str(), nullptr);
}

void AddInSite::writeSettings(const std::string& text) const
{
    putFile(folder_ + peer::settingsFile, text);
}

void AddInSite::writeMachineSettings(std::int32_t id, std::int32_t ncPath,
                                     const std::string& machine) const
{
    const std::wstring path = peer::fromUtf8(machine);
    const std::wstring line = peer::formatMachineSettings(id, ncPath, 0, path).value_or(L"");
    putFile(peer::machineSettingsPath(folder_, id), peer::toAnsi(line).value_or(""));
}

void putFile(const std::wstring& path, const std::string& bytes)
{
    if (!peer::writeFile(path, bytes))
        throw std::runtime_error(peer::toUtf8(path) + " cannot be written");
}

} // namespace zemlink
