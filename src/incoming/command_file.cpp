#include "incoming/command_file.h"

#include "companion/installation.h"

namespace torvapdm {

std::wstring commandFilePathNow()
{
    return getInstallationFolder() + L"\\temp\\mastercam-" +
           std::to_wstring(GetCurrentProcessId()) + L".dat";
}

HANDLE createCommandFile(const std::wstring& path)
{
    // A zero inside would name, and empty, and in the end delete, somebody else's file.
    if (path.find(L'\0') != std::wstring::npos)
        return INVALID_HANDLE_VALUE;
    return CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE,
                       FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                       CREATE_ALWAYS, FILE_FLAG_DELETE_ON_CLOSE, nullptr);
}

HANDLE createCommandFileOrNull(const std::wstring& path)
{
    const HANDLE file = createCommandFile(path);
    return file == INVALID_HANDLE_VALUE ? nullptr : file;
}

LONGLONG commandFileSize(HANDLE file)
{
    LARGE_INTEGER size{};
    GetFileSizeEx(file, &size);
    return size.QuadPart;
}

std::string readCommandFile(HANDLE file, LONGLONG size)
{
    std::string text(static_cast<size_t>(size), '\0');
    DWORD read = 0;
    ReadFile(file, text.data(), static_cast<DWORD>(size), &read, nullptr);
    return text;
}

} // namespace torvapdm
