#include "peer/delivery.h"

#include "peer/handle.h"

namespace peer {
namespace {

// The host deletes the file only after it found bytes in it. A file that is empty and not being
// deleted right before the write is therefore read before it is deleted, unless the host ends.
bool isEmptyAndKept(HANDLE file)
{
    FILE_STANDARD_INFO information{};
    return GetFileInformationByHandleEx(file, FileStandardInfo, &information, sizeof information) &&
           information.EndOfFile.QuadPart == 0 && !information.DeletePending;
}

// Two writers that both found the file empty would overwrite each other. The locked byte is far
// beyond everything that a host reads; closing the handle releases the lock.
bool lockOutOtherWriters(HANDLE file)
{
    OVERLAPPED place{};
    place.OffsetHigh = 1;
    return LockFileEx(file, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &place);
}

} // namespace

Verdict judgeBeforeWriting(const CommandFileState& state, std::int64_t waitedMs,
                           std::int64_t missingMs, const DeliveryBounds& bounds)
{
    if (!state.exists)
        return missingMs < bounds.missingMs ? Verdict::wait : Verdict::missing;
    // The limit is checked first: it also ends a delivery into a file that is empty but can never
    // be written.
    if (waitedMs >= bounds.beforeWritingMs)
        return Verdict::full;
    return state.size == 0 ? Verdict::write : Verdict::wait;
}

Verdict judgeAfterWriting(const CommandFileState& state, std::int64_t waitedMs,
                          std::int64_t missingMs, const DeliveryBounds& bounds)
{
    if (!state.exists)
        return missingMs < bounds.missingMs ? Verdict::wait : Verdict::lost;
    if (state.size == 0)
        return Verdict::taken;
    return waitedMs < bounds.untilTakenMs ? Verdict::wait : Verdict::notTaken;
}

CommandFileState readCommandFileState(const std::wstring& path)
{
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data))
        return {};
    const std::uint64_t high = data.nFileSizeHigh;
    return {true, high << 32 | data.nFileSizeLow};
}

bool writeRequest(const std::wstring& path, const std::string& request)
{
    const OwnHandle file =
        ownFile(CreateFileW(path.c_str(), GENERIC_WRITE | FILE_READ_ATTRIBUTES,
                            FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                            OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    DWORD written = 0;
    return file && lockOutOtherWriters(file.get()) && isEmptyAndKept(file.get()) &&
           WriteFile(file.get(), request.data(), static_cast<DWORD>(request.size()), &written,
                     nullptr) &&
           written == request.size();
}

} // namespace peer
