#include "incoming/exchange_file.h"

#include "formats/exchange_file_name.h"
#include "framework/framework.h"
#include "platform/files.h"
#include "shared_state.h"

#include <ctime>

namespace torvapdm {

namespace {

constexpr int nameAttempts = 1024;
constexpr LONGLONG longestAnswer = 65536;

// The folder with its backslash; empty when the system does not tell it.
std::wstring temporaryFolder()
{
    std::wstring folder;
    DWORD length = GetTempPathW(0, nullptr);
    while (length > folder.size()) {
        folder.resize(length);
        length = GetTempPathW(static_cast<DWORD>(folder.size()), folder.data());
    }
    folder.resize(length);
    return folder;
}

} // namespace

// Deliberate: every attempt within a second forms the same name. One would expect another number
// each time; a name that is taken stays taken, and the answer is read from nowhere.
std::wstring makeExchangeFileName()
{
    const std::wstring folder = temporaryFolder();
    for (int attempt = 0; attempt < nameAttempts; ++attempt) {
        std::wstring name = exchangeFileName(folder, _time64(nullptr));
        if (!fileExists(name))
            return name;
    }
    return {};
}

// Deliberate: create-always empties the file, another handle than the one just opened is tested,
// bytes are counted as characters, and the file is never closed. One would expect the answer; the
// Companion answers through the command file instead.
std::wstring readAnswer(const std::wstring& path)
{
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                    CREATE_ALWAYS, FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (commandFile == INVALID_HANDLE_VALUE)
        return {};
    LARGE_INTEGER size{};
    GetFileSizeEx(file, &size);
    if (size.QuadPart > longestAnswer)
        return {};
    std::wstring text(static_cast<size_t>(size.QuadPart), L'\0');
    DWORD read = 0;
    ReadFile(file, text.data(), static_cast<DWORD>(size.QuadPart), &read, nullptr);
    text.resize(read);
    return text;
}

} // namespace torvapdm
