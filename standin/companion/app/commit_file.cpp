#include "standin/companion/app/commit_file.h"

#include "peer/commit_record.h"
#include "peer/files.h"
#include "peer/handle.h"
#include "peer/lines.h"
#include "peer/text.h"

#include <algorithm>

#include <tlhelp32.h>

namespace companion {
namespace {

constexpr std::uint64_t mostBytes = 4 * peer::longestCommitRecord; // per read

OVERLAPPED placeOf(std::uint64_t offset)
{
    OVERLAPPED place{};
    place.Offset = static_cast<DWORD>(offset);
    place.OffsetHigh = static_cast<DWORD>(offset >> 32);
    return place;
}

// Locks `length` bytes from the offset, unless another process has locked one of them.
class RangeLock {
public:
    RangeLock(HANDLE file, std::uint64_t offset, std::uint64_t length)
        : file_(file),
          place_(placeOf(offset)),
          low_(static_cast<DWORD>(length)),
          high_(static_cast<DWORD>(length >> 32)),
          isHeld_(LockFileEx(file_, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, low_,
                             high_, &place_) != FALSE)
    {
    }
    ~RangeLock()
    {
        if (isHeld_)
            UnlockFileEx(file_, 0, low_, high_, &place_);
    }
    RangeLock(const RangeLock&) = delete;
    RangeLock& operator=(const RangeLock&) = delete;

    bool isHeld() const { return isHeld_; }

private:
    HANDLE file_;
    OVERLAPPED place_;
    DWORD low_, high_;
    bool isHeld_;
};

// All bytes or nothing.
std::optional<std::string> readRange(HANDLE file, std::uint64_t offset, std::uint64_t length)
{
    std::string bytes(static_cast<size_t>(length), '\0');
    OVERLAPPED place = placeOf(offset);
    DWORD read = 0;
    if (!ReadFile(file, bytes.data(), static_cast<DWORD>(length), &read, &place) || read != length)
        return std::nullopt;
    return bytes;
}

// The live file is shared with hosts. The closed one is not: it can be opened only after the last
// host has closed it, and then it is complete.
peer::OwnHandle openToRead(const peer::CommitPaths& paths, bool isClosed)
{
    const std::wstring& path = isClosed ? paths.closed : paths.live;
    const DWORD share = isClosed ? 0 : FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    return peer::ownFile(CreateFileW(path.c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING,
                                     FILE_ATTRIBUTE_NORMAL, nullptr));
}

// While a closed file exists, the bookmark belongs to it. `finished` means a closed file that was
// about to be removed, so it never applies to a live file.
peer::Bookmark bookmarkOf(const peer::CommitPaths& paths)
{
    const auto bytes = peer::readFile(paths.bookmark);
    return peer::parseBookmark(peer::fromUtf8(bytes.value_or(""))).value_or(peer::Bookmark{});
}

// Hosts lock from the end of the file, so this lock never blocks them. Once the file has grown, the
// bytes that a host has locked are within this range.
std::optional<Waiting> readUnderLock(HANDLE file, std::uint64_t from, std::uint64_t end,
                                     Waiting waiting)
{
    const std::uint64_t length = end - from;
    const RangeLock lock(file, from, length);
    auto bytes = lock.isHeld() ? readRange(file, from, std::min(length, mostBytes)) : std::nullopt;
    if (!bytes || !GetFileTime(file, nullptr, nullptr, &waiting.written))
        return std::nullopt;
    waiting.areAll = bytes->size() == length;
    waiting.bytes = std::move(*bytes);
    return waiting;
}

std::wstring ownProgramName()
{
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    return peer::fileNameOf(path);
}

} // namespace

CommitFile findCommitFile(const std::wstring& folder, std::uint32_t process)
{
    CommitFile file{process, peer::commitPaths(folder, process), {}};
    file.bookmark = bookmarkOf(file.paths);
    if (file.bookmark.isFinished) {
        removeCommitFile(file);
    } else if (!hasCommits(file)) {
        DeleteFileW(file.paths.bookmark.c_str());
        file.bookmark = {};
    }
    return file;
}

std::vector<std::uint32_t> listCommitFiles(const std::wstring& folder)
{
    std::vector<std::uint32_t> processes;
    WIN32_FIND_DATAW found{};
    HANDLE search = FindFirstFileW(peer::commitFilePattern(folder).c_str(), &found);
    if (search == INVALID_HANDLE_VALUE)
        return processes;
    do {
        const auto process = peer::processOfCommitFile(found.cFileName);
        if (process && std::find(processes.begin(), processes.end(), *process) == processes.end())
            processes.push_back(*process);
    } while (FindNextFileW(search, &found));
    FindClose(search);
    std::sort(processes.begin(), processes.end());
    return processes;
}

bool isRunningCompanion(std::uint32_t process)
{
    const peer::OwnHandle processes =
        peer::ownFile(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    for (BOOL isThere = Process32FirstW(processes.get(), &entry); isThere;
         isThere = Process32NextW(processes.get(), &entry))
        if (entry.th32ProcessID == process)
            return peer::isSameIgnoringCase(peer::fileNameOf(entry.szExeFile), ownProgramName());
    return false;
}

bool hasCommits(const CommitFile& file)
{
    return peer::isFile(file.paths.closed) || peer::isFile(file.paths.live);
}

bool closeToHosts(const CommitFile& file)
{
    return MoveFileExW(file.paths.live.c_str(), file.paths.closed.c_str(), 0);
}

std::optional<Waiting> readWaiting(CommitFile& file)
{
    if (file.bookmark.isFinished) {
        removeCommitFile(file); // an earlier attempt failed
        return std::nullopt;
    }
    Waiting waiting;
    waiting.isClosed = peer::isFile(file.paths.closed);
    const peer::OwnHandle handle = openToRead(file.paths, waiting.isClosed);
    LARGE_INTEGER size{};
    if (!handle || !GetFileSizeEx(handle.get(), &size))
        return std::nullopt;
    const auto end = static_cast<std::uint64_t>(size.QuadPart);
    if (end < file.bookmark.taken)
        file.bookmark = {}; // the file was deleted; this is a new one
    return end == file.bookmark.taken
               ? waiting
               : readUnderLock(handle.get(), file.bookmark.taken, end, waiting);
}

bool saveBookmark(const CommitFile& file)
{
    return peer::replaceFile(file.paths.bookmark,
                             peer::toUtf8(peer::formatBookmark(file.bookmark)));
}

void removeCommitFile(CommitFile& file)
{
    file.bookmark = {.isFinished = true};
    // findCommitFile can continue after each step.
    if (saveBookmark(file) &&
        (DeleteFileW(file.paths.closed.c_str()) || !peer::isFile(file.paths.closed)) &&
        DeleteFileW(file.paths.bookmark.c_str()))
        file.bookmark = {};
}

} // namespace companion
