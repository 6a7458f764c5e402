#include "platform/files.h"

#include "framework/framework.h"

#include <sys/stat.h>

namespace torvapdm {

bool fileExists(const std::wstring& path)
{
    WIN32_FILE_ATTRIBUTE_DATA data;
    return GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data) &&
           !(data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY);
}

bool pathExists(const std::wstring& path)
{
    WIN32_FILE_ATTRIBUTE_DATA data;
    return GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data);
}

int getFileSize(const std::wstring& path)
{
    struct _stat64i32 status {};
    _wstat64i32(path.c_str(), &status);
    return status.st_size;
}

} // namespace torvapdm
