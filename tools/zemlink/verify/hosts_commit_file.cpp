#include "tools/zemlink/verify/hosts_commit_file.h"

namespace zemlink {
namespace {

struct Place {
    DWORD low, high;
};

Place placeAt(std::uint64_t offset)
{
    return {static_cast<DWORD>(offset), static_cast<DWORD>(offset >> 32)};
}

void noteFirst(std::string& text, const std::string& what)
{
    if (text.empty())
        text = what;
}

std::uint64_t sizeOf(HANDLE file)
{
    LARGE_INTEGER size{};
    return GetFileSizeEx(file, &size) ? static_cast<std::uint64_t>(size.QuadPart) : 0;
}

bool isSameFile(HANDLE a, HANDLE b)
{
    BY_HANDLE_FILE_INFORMATION one{}, other{};
    return GetFileInformationByHandle(a, &one) && GetFileInformationByHandle(b, &other) &&
           one.nFileIndexLow == other.nFileIndexLow && one.nFileIndexHigh == other.nFileIndexHigh;
}

bool tryLock(HANDLE file, std::uint64_t offset, size_t size)
{
    const Place place = placeAt(offset);
    return LockFile(file, place.low, place.high, static_cast<DWORD>(size), 0) != FALSE;
}

void unlock(HANDLE file, std::uint64_t offset, size_t size)
{
    const Place place = placeAt(offset);
    UnlockFile(file, place.low, place.high, static_cast<DWORD>(size), 0);
}

} // namespace

void LockedRecord::release()
{
    if (file_)
        unlock(file_.get(), offset_, size_);
    file_.reset();
}

HostsCommitFile::HostsCommitFile(std::wstring path, const Waiting& waiting)
    : path_(std::move(path)), waiting_(waiting), first_(open())
{
    end_ = first_ ? sizeOf(first_.get()) : 0;
}

peer::OwnHandle HostsCommitFile::open()
{
    constexpr DWORD shareEverything = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    peer::OwnHandle file;
    waiting_.until([&] {
        file = peer::ownFile(CreateFileW(path_.c_str(), GENERIC_READ | GENERIC_WRITE,
                                         shareEverything, nullptr, OPEN_ALWAYS, 0, nullptr));
        if (!file)
            noteFirst(openError_,
                      "A host could not open it: error " + std::to_string(GetLastError()) + '.');
        return file != nullptr;
    });
    return file;
}

bool HostsCommitFile::lock(HANDLE file, std::uint64_t offset, size_t size)
{
    return waiting_.until([&] {
        const bool isLocked = tryLock(file, offset, size);
        if (!isLocked)
            noteFirst(lockError_, "A host that locked from the end it had found, " +
                                      std::to_string(offset) + ", got error " +
                                      std::to_string(GetLastError()) + '.');
        return isLocked;
    });
}

// Leaves the bytes locked.
bool HostsCommitFile::write(HANDLE file, std::string_view bytes, std::uint64_t& offset)
{
    LONG high = 0;
    const DWORD low = SetFilePointer(file, 0, &high, FILE_END);
    offset = std::uint64_t{static_cast<DWORD>(high)} << 32 | low;
    DWORD written = 0;
    if (!lock(file, offset, bytes.size()) ||
        !WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr))
        return false;
    if (offset < end_)
        noteFirst(change_, "It was " + std::to_string(end_) + " bytes long, and then ended at " +
                               std::to_string(offset) + '.');
    end_ = offset + bytes.size();
    return written == bytes.size();
}

bool HostsCommitFile::append(std::string_view bytes)
{
    look();
    return static_cast<bool>(appendLocked(bytes)); // and releases it
}

bool HostsCommitFile::appendWithFirstHandle(std::string_view bytes)
{
    std::uint64_t offset = 0;
    const bool isWritten = first_ && write(first_.get(), bytes, offset);
    if (first_)
        unlock(first_.get(), offset, bytes.size());
    return isWritten;
}

LockedRecord HostsCommitFile::appendLocked(std::string_view bytes)
{
    std::uint64_t offset = 0;
    peer::OwnHandle file = open();
    if (file && !write(file.get(), bytes, offset))
        file.reset();
    return {std::move(file), offset, bytes.size()};
}

void HostsCommitFile::checkStays()
{
    const peer::OwnHandle now = peer::ownFile(CreateFileW(
        path_.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
        nullptr, OPEN_EXISTING, 0, nullptr));
    const DWORD error = GetLastError();
    if (!now && error == ERROR_FILE_NOT_FOUND)
        noteFirst(change_, "It was deleted or renamed.");
    else if (!now)
        noteFirst(openError_, "A host could not open it: error " + std::to_string(error) + '.');
    else if (!isSameFile(now.get(), first_.get()))
        noteFirst(change_, "It was replaced by another file.");
    else if (const std::uint64_t size = sizeOf(now.get()); size < end_)
        noteFirst(change_, "It was cut from " + std::to_string(end_) + " to " +
                               std::to_string(size) + " bytes.");
}

void HostsCommitFile::look()
{
    if (!first_)
        return;
    checkStays();
    if (!tryLock(first_.get(), end_, 1))
        noteFirst(lockError_, "The byte at its end, " + std::to_string(end_) +
                                  ", was locked: hosts lock from there.");
    else
        unlock(first_.get(), end_, 1);
}

} // namespace zemlink
