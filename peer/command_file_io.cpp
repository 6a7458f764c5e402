#include "command_file_io.h"

#include "handle.h"

namespace companion {
namespace {

// The host deletes the file only after it found something in it. A file that is empty and not
// deleted right before the write is therefore read before it goes away, unless the host ends.
bool isEmptyAndKept(HANDLE file)
{
    FILE_STANDARD_INFO information{};
    return GetFileInformationByHandleEx(file, FileStandardInfo, &information, sizeof information) &&
           information.EndOfFile.QuadPart == 0 && !information.DeletePending;
}

// Two writers that both found the file empty would write over each other. The place that is locked
// lies far behind all that a host reads, and the lock goes with the handle.
bool lockOutOtherWriters(HANDLE file)
{
    OVERLAPPED place{};
    place.OffsetHigh = 1;
    return LockFileEx(file, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &place);
}

} // namespace

Sight lookAtCommandFile(const std::wstring& path)
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

} // namespace companion
