#include "tools/zemlink/verify/addin_lock.h"

#include "peer/handle.h"

#include <utility>

namespace zemlink {
namespace {

// Before a record that counts: with fewer, this thread got too little processor time.
constexpr size_t fewestTries = 10;

OVERLAPPED placeOf(std::uint64_t offset)
{
    OVERLAPPED place{};
    place.Offset = static_cast<DWORD>(offset);
    place.OffsetHigh = static_cast<DWORD>(offset >> 32);
    return place;
}

bool isLockedByOther(HANDLE file, std::uint64_t offset)
{
    OVERLAPPED place = placeOf(offset);
    if (LockFileEx(file, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &place)) {
        UnlockFileEx(file, 0, 1, 0, &place);
        return false;
    }
    return GetLastError() == ERROR_LOCK_VIOLATION;
}

// The file only grows: a byte before its end is never part of a record that is still to come. One
// byte is tried at a time, because a lock lasts no longer than a few tries.
bool lookForLock(LocksSeen& seen, HANDLE file, std::uint64_t end, std::uint32_t recordBytes)
{
    bool& isSeen = seen.atFirstByte ? seen.atLastByte : seen.atFirstByte;
    isSeen = isLockedByOther(file, seen.atFirstByte ? end + recordBytes - 1 : end);
    if (isSeen && end != 0)
        seen.before = isLockedByOther(file, end - 1) || seen.before;
    return isSeen;
}

} // namespace

LockWatch::LockWatch(const std::wstring& file, std::uint32_t recordBytes)
    : thread_([this, file, recordBytes] { watch(file, recordBytes); })
{
}

LockWatch::~LockWatch()
{
    end();
}

LocksSeen LockWatch::end()
{
    isDone_ = true;
    if (thread_.joinable())
        thread_.join();
    return seen_;
}

void LockWatch::watch(const std::wstring& file, std::uint32_t recordBytes)
{
    const peer::OwnHandle opened =
        peer::ownFile(CreateFileW(file.c_str(), GENERIC_READ | GENERIC_WRITE,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    SetThreadPriority(GetCurrentThread(), THREAD_PRIORITY_HIGHEST); // to hold each lock briefly
    LARGE_INTEGER size{};
    std::int64_t lastSize = opened && GetFileSizeEx(opened.get(), &size) ? size.QuadPart : 0;
    size_t tries = 0; // since the last record
    while (opened && !isDone_ && GetFileSizeEx(opened.get(), &size)) {
        if (std::exchange(lastSize, size.QuadPart) != size.QuadPart)
            seen_.records += std::exchange(tries, 0) >= fewestTries;
        ++tries;
        if (lookForLock(seen_, opened.get(), static_cast<std::uint64_t>(size.QuadPart),
                        recordBytes))
            seen_.records = 0;
        if (seen_.isWholeRecord() || seen_.records >= enoughRecords)
            isDone_ = true;
    }
}

} // namespace zemlink
