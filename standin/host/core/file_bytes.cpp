#include "core/file_bytes.h"

#include <windows.h>

namespace standin {

namespace {

constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr LONGLONG largestFile = 1LL << 30;

std::optional<std::string> readAll(HANDLE file)
{
    LARGE_INTEGER size{};
    if (!GetFileSizeEx(file, &size) || size.QuadPart > largestFile)
        return std::nullopt;
    std::string bytes(static_cast<size_t>(size.QuadPart), '\0');
    DWORD read = 0;
    if (!ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr) ||
        read != bytes.size())
        return std::nullopt;
    return bytes;
}

bool writeNewFile(const std::wstring& path, std::string_view bytes)
{
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                    CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return false;
    DWORD written = 0;
    const bool isWritten =
        WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) &&
        written == bytes.size();
    return CloseHandle(file) && isWritten;
}

// Replaces the other file, and retries while another program reads it.
bool moveOver(const std::wstring& file, const std::wstring& other)
{
    constexpr int attempts = 50;
    constexpr DWORD pauseMs = 10;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        if (MoveFileExW(file.c_str(), other.c_str(), MOVEFILE_REPLACE_EXISTING))
            return true;
        Sleep(pauseMs);
    }
    return false;
}

} // namespace

std::optional<std::string> readFileBytes(const std::wstring& path)
{
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, shareAll, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return std::nullopt;
    std::optional<std::string> bytes = readAll(file);
    CloseHandle(file);
    return bytes;
}

bool writeFileBytes(const std::wstring& path, std::string_view bytes)
{
    const std::wstring temporary = path + L"." + std::to_wstring(GetCurrentProcessId()) + L".new";
    if (writeNewFile(temporary, bytes) && moveOver(temporary, path))
        return true;
    DeleteFileW(temporary.c_str());
    return false;
}

} // namespace standin
