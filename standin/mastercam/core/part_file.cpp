#include "core/part_file.h"

#include "core/file_bytes.h"
#include "core/part_text.h"

#include <windows.h>

namespace standin {

std::shared_ptr<Part> readPartFile(const std::wstring& path)
{
    const std::optional<std::string> text = readFileBytes(path);
    return text ? readPartText(*text) : nullptr;
}

bool writePartFile(const Part& part, const std::wstring& path)
{
    std::string text;
    if (!writePartText(part, text))
        return false;
    const std::wstring beside = path + L".writing";
    if (writeFileBytes(beside, text) &&
        MoveFileExW(beside.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING))
        return true;
    DeleteFileW(beside.c_str());
    return false;
}

} // namespace standin
