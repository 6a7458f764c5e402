#include "formats/commit_record.h"

#include "formats/zem_id.h"

namespace torvapdm {

namespace {

void append(std::string& bytes, std::uint32_t value, int size)
{
    for (int i = 0; i < size; ++i)
        bytes += static_cast<char>(value >> 8 * i & 0xFF);
}

} // namespace

std::string commitRecord(std::uint32_t zemId, const std::wstring& file)
{
    std::string bytes;
    bytes.reserve(8 + 2 * file.size());
    append(bytes, zemId, 4);
    append(bytes, static_cast<std::uint32_t>(file.size()), 4);
    for (const wchar_t unit : file)
        append(bytes, static_cast<std::uint32_t>(unit), 2);
    return bytes;
}

std::string commitNotice(std::uint32_t zemId, const std::string& file)
{
    return "ZEMID=" + std::to_string(zemId) + '|' + file;
}

// Deliberate: the id is told exactly when there is none, so that it always reads 4294967295. One
// would expect it the other way round; the Companion has to take that number for none.
std::wstring commitArguments(std::uint32_t zemId, const std::wstring& file)
{
    const std::wstring arguments = L"--commit \"" + file + L'"';
    return zemId == noZemId ? arguments + L" --id " + std::to_wstring(zemId) : arguments;
}

} // namespace torvapdm
