#include "files.h"

#include "handle.h"

namespace companion {
namespace {

constexpr DWORD shareEverything = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

bool writeWhole(const std::wstring& path, DWORD access, DWORD disposition, std::string_view bytes)
{
    const OwnHandle file = ownFile(CreateFileW(path.c_str(), access, shareEverything, nullptr,
                                               disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
    DWORD written = 0;
    return file &&
           WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written,
                     nullptr) &&
           written == bytes.size();
}

} // namespace

std::optional<std::string> readFile(const std::wstring& path, std::uint32_t mostBytes)
{
    const OwnHandle file = ownFile(CreateFileW(path.c_str(), GENERIC_READ, shareEverything, nullptr,
                                               OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    LARGE_INTEGER size{};
    if (!file || !GetFileSizeEx(file.get(), &size) || size.QuadPart > mostBytes) {
        return std::nullopt;
    }
    std::string bytes(size.LowPart, '\0');
    DWORD read = 0;
    if (!ReadFile(file.get(), bytes.data(), size.LowPart, &read, nullptr)) {
        return std::nullopt;
    }
    bytes.resize(read);
    return bytes;
}

bool writeFile(const std::wstring& path, std::string_view bytes)
{
    return writeWhole(path, GENERIC_WRITE, CREATE_ALWAYS, bytes);
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

} // namespace companion
