#include "formats/commit_record.h"

namespace torvapdm {

namespace {

void append(std::string& bytes, std::uint32_t value, int size)
{
    for (int i = 0; i < size; ++i)
        bytes += static_cast<char>(value >> 8 * i & 0xFF);
}

} // namespace

std::string formatCommitRecord(std::uint32_t zemId, const std::wstring& file)
{
    std::string bytes;
    bytes.reserve(8 + 2 * file.size());
    append(bytes, zemId, 4);
    append(bytes, static_cast<std::uint32_t>(file.size()), 4);
    for (const wchar_t unit : file)
        append(bytes, static_cast<std::uint32_t>(unit), 2);
    return bytes;
}

} // namespace torvapdm
