#include "tools/zemlink/session/file_look.h"

#include "peer/handle.h"
#include "tools/zemlink/session/local_time.h"

#include <algorithm>

namespace zemlink {

FileLook lookAt(const std::wstring& path)
{
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data) ||
        (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
        return {};
    const FILETIME& written = data.ftLastWriteTime;
    return {true, std::uint64_t{data.nFileSizeHigh} << 32 | data.nFileSizeLow, timeOf(written),
            std::uint64_t{written.dwHighDateTime} << 32 | written.dwLowDateTime};
}

std::optional<std::string> readFrom(const std::wstring& path, std::uint64_t offset,
                                    std::uint32_t mostBytes)
{
    const peer::OwnHandle file = peer::ownFile(CreateFileW(
        path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
        OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    LARGE_INTEGER size{};
    if (!file || GetFileType(file.get()) != FILE_TYPE_DISK || !GetFileSizeEx(file.get(), &size))
        return std::nullopt;
    const auto end = static_cast<std::uint64_t>(size.QuadPart);
    if (end <= offset)
        return std::string();
    std::string bytes(static_cast<size_t>(std::min<std::uint64_t>(end - offset, mostBytes)), '\0');
    OVERLAPPED place{};
    place.Offset = static_cast<DWORD>(offset);
    place.OffsetHigh = static_cast<DWORD>(offset >> 32);
    DWORD read = 0;
    if (!ReadFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, &place))
        return std::nullopt;
    bytes.resize(read);
    return bytes;
}

bool isFolder(const std::wstring& path)
{
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

std::vector<std::wstring> listFiles(const std::wstring& pattern)
{
    std::vector<std::wstring> names;
    WIN32_FIND_DATAW found{};
    const HANDLE search = FindFirstFileW(pattern.c_str(), &found);
    if (search == INVALID_HANDLE_VALUE)
        return names;
    do {
        if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0)
            names.emplace_back(found.cFileName);
    } while (FindNextFileW(search, &found));
    FindClose(search);
    return names;
}

} // namespace zemlink
