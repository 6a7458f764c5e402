#include "life/file_tail.h"

#include "support/bytes.h"

#include <windows.h>

namespace testing_support {

namespace {

// What stands behind the offset, up to a megabyte.
std::string bytesFrom(const std::wstring& path, unsigned long long offset)
{
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return {};
    LARGE_INTEGER place{};
    place.QuadPart = static_cast<LONGLONG>(offset);
    std::string bytes;
    LARGE_INTEGER size{};
    if (GetFileSizeEx(file, &size) && size.QuadPart > place.QuadPart &&
        SetFilePointerEx(file, place, nullptr, FILE_BEGIN)) {
        bytes.resize(1 << 20);
        DWORD read = 0;
        ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr);
        bytes.resize(read);
    }
    CloseHandle(file);
    return bytes;
}

} // namespace

Lines FileTail::newLines()
{
    std::string bytes = bytesFrom(path_, offset_);
    bytes.resize(bytes.rfind('\n') + 1); // nothing where there is no line feed
    offset_ += bytes.size();
    return linesOf(fromUtf8(bytes));
}

} // namespace testing_support
