#include "screen_picture.h"

#include "peer/exchange_paths.h"

namespace companion {
namespace {

// False also when there is no such file.
bool isWrittenBy(const std::wstring& path, const FILETIME& time)
{
    WIN32_FILE_ATTRIBUTE_DATA data{};
    return GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data) &&
           CompareFileTime(&data.ftLastWriteTime, &time) <= 0;
}

} // namespace

bool takeScreenPicture(const std::wstring& folder, const FILETIME& notAfter, const std::wstring& to)
{
    const std::wstring picture = screenPicturePath(folder);
    if (!isWrittenBy(picture, notAfter) ||
        !MoveFileExW(picture.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING))
        return false;
    if (isWrittenBy(to, notAfter))
        return true;
    // A host made the next one in the meantime. It goes back unless that is there again by now.
    if (!MoveFileW(to.c_str(), picture.c_str()))
        DeleteFileW(to.c_str());
    return false;
}

} // namespace companion
