#include "support/command_file_writer.h"

#include <windows.h>

namespace testing_support {

bool writeRequest(const std::wstring& commandFile, std::string_view request)
{
    const HANDLE file = CreateFileW(commandFile.c_str(), GENERIC_READ | GENERIC_WRITE,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return false;
    DWORD written = 0;
    const DWORD size = static_cast<DWORD>(request.size());
    const bool whole = WriteFile(file, request.data(), size, &written, nullptr) && written == size;
    CloseHandle(file);
    return whole;
}

std::string openRequest(int id, const std::string& path)
{
    return "\xEF\xBB\xBF" + std::to_string(id) + ' ' + path + '\n';
}

} // namespace testing_support
