#include "support/installation.h"

#include "peer/exchange_paths.h"
#include "peer/handle.h"
#include "support/bytes.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <windows.h>
// Must come after windows.h.
#include <tlhelp32.h>

namespace testing_support {

namespace {

constexpr wchar_t companionKey[] = L"SOFTWARE\\TORVA AS\\ZEM";
constexpr wchar_t folderValue[] = L"installation folder";

void mustSucceed(LSTATUS status, const char* what)
{
    if (status == ERROR_SUCCESS)
        return;
    std::fprintf(stderr, "%s: error %ld\n", what, status);
    std::exit(99);
}

std::wstring ownRegistryKey()
{
    return L"Software\\torvapdm tests\\" + std::to_wstring(GetCurrentProcessId());
}

// Another one each time: a program's console inherits its output files and may keep them open for a
// moment after it, so that a new file of the same name would be removed with the old one.
std::wstring freshFolder()
{
    static int number = 0;
    return (std::filesystem::temp_directory_path() /
            (L"zem " + std::to_wstring(GetCurrentProcessId()) + L'.' + std::to_wstring(++number)))
        .wstring();
}

void removeOwnRegistry()
{
    RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    RegDeleteTreeW(HKEY_CURRENT_USER, ownRegistryKey().c_str());
}

void removeBelow(const std::wstring& path)
{
    WIN32_FIND_DATAW found{};
    const HANDLE search = FindFirstFileW((path + L"\\*").c_str(), &found);
    for (BOOL isThere = search != INVALID_HANDLE_VALUE; isThere;
         isThere = FindNextFileW(search, &found)) {
        const std::wstring name = found.cFileName;
        const std::wstring below = path + L'\\' + name;
        if (name == L"." || name == L"..")
            continue;
        SetFileAttributesW(below.c_str(), FILE_ATTRIBUTE_NORMAL);
        if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
            removeBelow(below);
        else
            DeleteFileW(below.c_str());
    }
    FindClose(search);
    RemoveDirectoryW(path.c_str());
}

// Ends all programs in the folder. A Companion that the add-in started through the shell is not a
// child process; if it kept running, it would hold its port and semaphore during the following
// tests.
void endProgramsIn(const std::wstring& folder)
{
    constexpr DWORD patienceMs = 10000;
    const peer::OwnHandle processes(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = Process32FirstW(processes.get(), &entry); more;
         more = Process32NextW(processes.get(), &entry)) {
        const peer::OwnHandle process(
            OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION | PROCESS_TERMINATE | SYNCHRONIZE, FALSE,
                        entry.th32ProcessID));
        wchar_t path[1024] = L"";
        DWORD size = 1024;
        if (process && QueryFullProcessImageNameW(process.get(), 0, path, &size) &&
            std::wstring_view(path, size).starts_with(folder + L'\\')) {
            TerminateProcess(process.get(), 98);
            WaitForSingleObject(process.get(), patienceMs);
        }
    }
}

} // namespace

void useEmptyRegistry()
{
    HKEY key = nullptr;
    mustSucceed(RegCreateKeyExW(HKEY_CURRENT_USER, ownRegistryKey().c_str(), 0, nullptr, 0,
                                KEY_ALL_ACCESS, nullptr, &key, nullptr),
                "create a registry key of the test's own");
    mustSucceed(RegOverridePredefKey(HKEY_CURRENT_USER, key), "use the test's own registry");
    RegCloseKey(key);
    std::atexit(removeOwnRegistry);
}

void registerInstallation(const std::wstring& folder)
{
    const DWORD size = static_cast<DWORD>((folder.size() + 1) * sizeof(wchar_t));
    HKEY key = nullptr;
    mustSucceed(RegCreateKeyExW(HKEY_CURRENT_USER, companionKey, 0, nullptr, 0,
                                KEY_WRITE | KEY_WOW64_32KEY, nullptr, &key, nullptr),
                "create the installation key");
    mustSucceed(RegSetValueExW(key, folderValue, 0, REG_SZ,
                               reinterpret_cast<const BYTE*>(folder.c_str()), size),
                "write the installation folder");
    RegCloseKey(key);
}

Installation::Installation(Registry registry) : Installation(registry, freshFolder()) {}

Installation::Installation(Registry registry, const std::wstring& root)
    : registry_(registry), root_(root)
{
    removeFolder(root_); // a terminated process with the same id may have left a folder
    for (const wchar_t* folder : {L"cfg", L"sys", L"temp", L"tmp", L"commit"})
        std::filesystem::create_directories(path(folder));
    if (registry == Registry::ofThisProcess)
        useEmptyRegistry();
    registerInstallation(root_);
}

Installation::~Installation()
{
    endProgramsIn(root_);
    if (registry_ == Registry::ofTheUser)
        RegDeleteKeyW(HKEY_CURRENT_USER, companionKey);
    if (!_wfreopen(L"NUL", L"r", stdin)) // also closes the file opened by feedStandardInput
        std::exit(99);
    removeFolder(root_);
}

std::wstring Installation::commandFile(unsigned long processId) const
{
    return peer::commandFilePath(root_, processId);
}

void Installation::installCompanion(const std::wstring& program) const
{
    std::filesystem::copy_file(program, path(L"TORVA-ZEM.exe"));
}

void Installation::feedStandardInput(std::string_view text) const
{
    writeBytes(path(L"input.txt"), text);
    if (!_wfreopen(path(L"input.txt").c_str(), L"r", stdin))
        std::exit(99);
}

std::wstring programFolder()
{
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    const std::wstring whole = path;
    return whole.substr(0, whole.rfind(L'\\') + 1);
}

void removeFolder(const std::wstring& path)
{
    removeBelow(LR"(\\?\)" + path); // also allows paths that std::filesystem cannot handle
}

} // namespace testing_support
