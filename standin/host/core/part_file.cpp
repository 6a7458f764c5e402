#include "core/part_file.h"

#include "core/file_bytes.h"
#include "core/part_text.h"

namespace standin {

std::shared_ptr<Part> readPartFile(const std::wstring& path)
{
    const std::optional<std::string> text = readFileBytes(path);
    return text ? readPartText(*text) : nullptr;
}

bool writePartFile(const Part& part, const std::wstring& path)
{
    std::string text;
    return writePartText(part, text) && writeFileBytes(path, text);
}

} // namespace standin
