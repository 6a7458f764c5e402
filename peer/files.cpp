#include "peer/files.h"

#include "peer/handle.h"

#include <algorithm>

namespace peer {
namespace {

constexpr DWORD shareEverything = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

bool writeWhole(const std::wstring& path, DWORD access, DWORD disposition, std::string_view bytes,
                DWORD flags = FILE_ATTRIBUTE_NORMAL)
{
    const OwnHandle file = ownFile(
        CreateFileW(path.c_str(), access, shareEverything, nullptr, disposition, flags, nullptr));
    DWORD written = 0;
    return file &&
           WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written,
                     nullptr) &&
           written == bytes.size();
}

// A file that another program is reading cannot be replaced, but usually a moment later.
bool moveOver(const std::wstring& from, const std::wstring& to, DWORD flags)
{
    constexpr int tries = 20;
    constexpr DWORD pauseMs = 5;
    for (int i = 0; i < tries; ++i) {
        if (MoveFileExW(from.c_str(), to.c_str(), flags | MOVEFILE_WRITE_THROUGH))
            return true;
        Sleep(pauseMs);
    }
    return false;
}

// Null when the file cannot be read or is not on a disk.
OwnHandle openToRead(const std::wstring& path, std::uint64_t& size)
{
    OwnHandle file = ownFile(CreateFileW(path.c_str(), GENERIC_READ, shareEverything, nullptr,
                                         OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    LARGE_INTEGER found{};
    if (!file || GetFileType(file.get()) != FILE_TYPE_DISK || !GetFileSizeEx(file.get(), &found))
        return nullptr;
    size = static_cast<std::uint64_t>(found.QuadPart);
    return file;
}

std::optional<std::string> readFrom(const OwnHandle& file, std::uint64_t offset, DWORD count)
{
    std::string bytes(count, '\0');
    OVERLAPPED place{};
    place.Offset = static_cast<DWORD>(offset);
    place.OffsetHigh = static_cast<DWORD>(offset >> 32);
    DWORD read = 0;
    // Emptied meanwhile, it ends before this place.
    if (count != 0 && !ReadFile(file.get(), bytes.data(), count, &read, &place) &&
        GetLastError() != ERROR_HANDLE_EOF)
        return std::nullopt;
    bytes.resize(read);
    return bytes;
}

bool isWriteProtected(const std::wstring& path)
{
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
}

} // namespace

std::optional<std::string> readFile(const std::wstring& path, std::uint32_t mostBytes)
{
    std::uint64_t size = 0;
    const OwnHandle file = openToRead(path, size);
    if (!file || size > mostBytes)
        return std::nullopt;
    return readFrom(file, 0, static_cast<DWORD>(size));
}

std::optional<std::string> readEnd(const std::wstring& path, std::uint32_t mostBytes)
{
    std::uint64_t size = 0;
    const OwnHandle file = openToRead(path, size);
    if (!file)
        return std::nullopt;
    const std::uint64_t count = std::min<std::uint64_t>(size, mostBytes);
    return readFrom(file, size - count, static_cast<DWORD>(count));
}

bool writeFile(const std::wstring& path, std::string_view bytes)
{
    return writeWhole(path, GENERIC_WRITE, CREATE_ALWAYS, bytes);
}

bool createFile(const std::wstring& path, std::string_view bytes)
{
    const std::wstring newFile = path + L".new";
    if (!writeWhole(newFile, GENERIC_WRITE, CREATE_NEW, "")) // another program's is not touched
        return false;
    const bool isCreated =
        writeWhole(newFile, GENERIC_WRITE, CREATE_ALWAYS, bytes, FILE_FLAG_WRITE_THROUGH) &&
        moveOver(newFile, path, 0);
    if (!isCreated)
        DeleteFileW(newFile.c_str());
    return isCreated;
}

bool replaceFile(const std::wstring& path, std::string_view bytes)
{
    const std::wstring newFile = path + L".new";
    if (isWriteProtected(path))
        return false;
    const bool isReplaced =
        writeWhole(newFile, GENERIC_WRITE, CREATE_ALWAYS, bytes, FILE_FLAG_WRITE_THROUGH) &&
        moveOver(newFile, path, MOVEFILE_REPLACE_EXISTING);
    if (!isReplaced)
        DeleteFileW(newFile.c_str());
    return isReplaced;
}

bool appendToFile(const std::wstring& path, std::string_view bytes)
{
    return writeWhole(path, FILE_APPEND_DATA, OPEN_ALWAYS, bytes);
}

bool isFile(const std::wstring& path)
{
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

std::uint64_t fileSize(const std::wstring& path)
{
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data))
        return 0;
    return std::uint64_t{data.nFileSizeHigh} << 32 | data.nFileSizeLow;
}

std::wstring freeName(const std::wstring& start, const std::wstring& end)
{
    for (int number = 1;; ++number) {
        std::wstring name = start + std::to_wstring(number) + end;
        if (!isFile(name))
            return name;
    }
}

} // namespace peer
