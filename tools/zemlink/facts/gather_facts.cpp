#include "tools/zemlink/facts/gather_facts.h"

#include "peer/bookmark.h"
#include "peer/companion_files.h"
#include "peer/exchange_paths.h"
#include "peer/files.h"
#include "peer/lines.h"
#include "peer/running_programs.h"
#include "peer/text.h"
#include "peer/wire_constants.h"
#include "tools/zemlink/facts/host_facts.h"
#include "tools/zemlink/facts/installation_facts.h"
#include "tools/zemlink/facts/port_facts.h"
#include "tools/zemlink/facts/request_facts.h"
#include "tools/zemlink/facts/system.h"

#include <algorithm>
#include <array>

namespace zemlink {
namespace {

Result tryToMakeFile(const std::wstring& folder)
{
    const std::wstring path =
        folder + L"\\zemlink-" + std::to_wstring(GetCurrentProcessId()) + L".tmp";
    const peer::OwnHandle file =
        peer::ownFile(CreateFileW(path.c_str(), GENERIC_WRITE | DELETE, 0, nullptr, CREATE_NEW,
                                  FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr));
    const DWORD error = GetLastError();
    return resultOf(file != nullptr, error);
}

std::vector<CommandFile> findCommandFiles(const std::wstring& folder)
{
    std::vector<CommandFile> files;
    WIN32_FIND_DATAW found{};
    const HANDLE search = FindFirstFileW(peer::commandFilePattern(folder).c_str(), &found);
    if (search == INVALID_HANDLE_VALUE)
        return files;
    do {
        const bool isFolder = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        if (const auto process = peer::processOfCommandFile(found.cFileName);
            process && !isFolder) {
            const std::wstring path = folder + peer::tempFolder + L'\\' + found.cFileName;
            files.push_back({path, *process, peer::fileSize(path), isRunning(*process)});
        }
    } while (FindNextFileW(search, &found));
    FindClose(search);
    std::sort(files.begin(), files.end(),
              [](const CommandFile& a, const CommandFile& b) { return a.process < b.process; });
    return files;
}

constexpr ULONGLONG boundMs = 2000;

bool hasCommandFile(const std::vector<CommandFile>& files, const Host& host)
{
    return std::ranges::find(files, host.process, &CommandFile::process) != files.end();
}

// A host is without its file for a moment after each request that it takes.
std::vector<CommandFile> waitForCommandFiles(const std::wstring& folder,
                                             const std::vector<Host>& hosts)
{
    const ULONGLONG end = GetTickCount64() + boundMs;
    for (;;) {
        std::vector<CommandFile> files = findCommandFiles(folder);
        const bool areComplete = std::ranges::all_of(
            hosts, [&](const Host& host) { return hasCommandFile(files, host); });
        if (areComplete || GetTickCount64() >= end)
            return files;
        Sleep(20);
    }
}

// Marks the files that keep a request for two seconds; a listener takes it within two tenths of
// one.
void waitForListeners(std::vector<CommandFile>& files)
{
    for (CommandFile& file : files)
        file.isLeft = file.isProcessRunning && file.bytes != 0;
    const ULONGLONG end = GetTickCount64() + boundMs;
    while (std::ranges::any_of(files, &CommandFile::isLeft) && GetTickCount64() < end) {
        Sleep(20);
        for (CommandFile& file : files) {
            file.bytes = peer::fileSize(file.path);
            file.isLeft = file.isLeft && file.bytes != 0;
        }
    }
}

// Only of files with a request: while we hold a handle, the host cannot create its file again.
void readRequests(std::vector<CommandFile>& files)
{
    for (CommandFile& file : files)
        if (file.bytes != 0)
            file.content = peer::readFile(file.path, peer::longestRequestBytes).value_or("");
}

// A host that is ready takes the machine settings within these two seconds.
void waitForLoads(const std::wstring& folder)
{
    const ULONGLONG end = GetTickCount64() + boundMs;
    while (!findMachineSettings(folder).empty() && GetTickCount64() < end)
        Sleep(20);
}

// By their paths where one of them cannot be opened. False when a path is unknown.
bool areDifferentFiles(const std::wstring& first, const std::wstring& second)
{
    if (first.empty() || second.empty())
        return false;
    const auto identity = [](const std::wstring& path) {
        BY_HANDLE_FILE_INFORMATION found{};
        const peer::OwnHandle file = peer::ownFile(
            CreateFileW(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                        nullptr, OPEN_EXISTING, 0, nullptr));
        if (!file || !GetFileInformationByHandle(file.get(), &found))
            return std::optional<std::array<DWORD, 3>>();
        return std::optional(
            std::array{found.dwVolumeSerialNumber, found.nFileIndexHigh, found.nFileIndexLow});
    };
    const auto one = identity(first), other = identity(second);
    return one && other ? *one != *other
                        : !peer::isSameIgnoringCase(fullPath(first), fullPath(second));
}

std::optional<peer::Bookmark> readBookmark(const peer::CommitPaths& paths)
{
    return peer::parseBookmark(peer::fromUtf8(peer::readFile(paths.bookmark).value_or("")));
}

// The bookmark holds how far the file has been taken. `finished` applies only to a closed file.
std::uint64_t takenOf(const peer::Bookmark& bookmark, const peer::CommitPaths& paths, bool isClosed)
{
    if (bookmark.isFinished)
        return isClosed ? peer::fileSize(paths.closed) : 0;
    return bookmark.taken;
}

CommitFile commitFile(const std::wstring& folder, const std::wstring& name, std::uint32_t process)
{
    const peer::CommitPaths paths = peer::commitPaths(folder, process);
    CommitFile file{folder + peer::tempFolder + L'\\' + name, process, isRunning(process)};
    const bool hasClosed = peer::isFile(paths.closed);
    // While a closed file exists, the bookmark belongs to it.
    const bool isClosed = file.path == paths.closed;
    const auto bookmark = readBookmark(paths);
    file.hasBookmark = bookmark.has_value();
    if (bookmark && hasClosed == isClosed)
        file.taken = takenOf(*bookmark, paths, isClosed);
    file.waiting = peer::readFile(file.path);
    if (file.waiting) {
        file.taken = file.taken <= file.waiting->size() ? file.taken : 0;
        file.waiting->erase(0, static_cast<size_t>(file.taken));
    }
    return file;
}

// Takes no lock, so that hosts and the Companion are not blocked.
std::vector<CommitFile> findCommitFiles(const std::wstring& folder)
{
    std::vector<CommitFile> files;
    WIN32_FIND_DATAW found{};
    const HANDLE search = FindFirstFileW(peer::commitFilePattern(folder).c_str(), &found);
    if (search == INVALID_HANDLE_VALUE)
        return files;
    do {
        const std::wstring name = found.cFileName;
        const auto process = peer::processOfCommitFile(name);
        if (process && !name.ends_with(peer::bookmarkEnd))
            files.push_back(commitFile(folder, name, *process));
    } while (FindNextFileW(search, &found));
    FindClose(search);
    std::sort(files.begin(), files.end(), [](const CommitFile& a, const CommitFile& b) {
        return a.process != b.process ? a.process < b.process : a.path < b.path;
    });
    return files;
}

} // namespace

Companion findCompanion()
{
    Companion found;
    found.isRunning = peer::isInstanceRunning();
    if (HWND window = peer::findInstanceWindow()) {
        found.process = peer::processOf(window);
        found.title = peer::windowTitle(window);
        found.program = programOf(*found.process);
        found.version = programVersion(found.program);
    }
    return found;
}

Facts gatherFacts(Tests tests)
{
    Facts facts;
    facts.toolVersion = programVersion(programOf(GetCurrentProcessId()));
    facts.folder = peer::readInstallationFolder();
    const std::wstring& folder = facts.folder.path;
    facts.folderFound = checkPath(folder, true);
    facts.commitFolderFound = checkPath(folder + peer::commitFolder, true);
    facts.programFound = checkPath(folder + L'\\' + peer::companionProgram, false);
    if (tests == Tests::made)
        facts.tempWritable = tryToMakeFile(folder + peer::tempFolder);
    facts.settings = peer::readFile(folder + peer::settingsFile);
    facts.setup = findSetup();
    facts.openPaths = findOpenPaths(folder, facts.setup);
    facts.workingCopies = readWorkingCopies(folder);
    if (tests == Tests::made)
        waitForLoads(folder);
    facts.hosts = findHostFacts();
    facts.hostsWithoutAddIn = findHostsWithoutAddIn(facts.hosts);
    facts.commandFiles =
        tests == Tests::made ? waitForCommandFiles(folder, facts.hosts) : findCommandFiles(folder);
    if (tests == Tests::made)
        waitForListeners(facts.commandFiles);
    readRequests(facts.commandFiles);
    facts.commitFiles = findCommitFiles(folder);
    // Together, since it may just be starting.
    facts.companion = findCompanion();
    facts.companion.isElsewhere =
        areDifferentFiles(facts.companion.program, folder + L'\\' + peer::companionProgram);
    facts.port = probePort();
    addRequestFacts(facts);
    return facts;
}

} // namespace zemlink
