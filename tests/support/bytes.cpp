#include "support/bytes.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <windows.h>

namespace testing_support {

namespace {

constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

} // namespace

std::optional<std::string> readBytes(const std::wstring& path)
{
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_READ, shareAll, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return std::nullopt;
    std::string bytes;
    char piece[4096];
    DWORD read = 0;
    while (ReadFile(file, piece, sizeof piece, &read, nullptr) && read > 0)
        bytes.append(piece, read);
    CloseHandle(file);
    return bytes;
}

void writeBytes(const std::wstring& path, std::string_view bytes)
{
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_WRITE, shareAll, nullptr, CREATE_ALWAYS, 0, nullptr);
    DWORD written = 0;
    if (file == INVALID_HANDLE_VALUE ||
        !WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) ||
        !CloseHandle(file)) {
        std::fprintf(stderr, "cannot write %ls\n", path.c_str());
        std::exit(99);
    }
}

std::string toUtf8(const std::wstring& text)
{
    const int length = static_cast<int>(text.size());
    const int size =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, bytes.data(), size, nullptr, nullptr);
    return bytes;
}

std::wstring fromUtf8(const std::string& text)
{
    const int length = static_cast<int>(text.size());
    const int size = MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0);
    std::wstring wide(static_cast<size_t>(size), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), length, wide.data(), size);
    return wide;
}

Lines linesOf(const std::wstring& text)
{
    Lines lines;
    for (size_t begin = 0; begin < text.size();) {
        const size_t end = std::min(text.find(L'\n', begin), text.size());
        lines.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return lines;
}

size_t count(const Lines& lines, const std::wstring& text)
{
    return static_cast<size_t>(std::count_if(
        lines.begin(), lines.end(),
        [&](const std::wstring& line) { return line.find(text) != std::wstring::npos; }));
}

Lines linesThatStart(const Lines& lines, const std::wstring& text)
{
    Lines found;
    std::copy_if(lines.begin(), lines.end(), std::back_inserter(found),
                 [&](const std::wstring& line) { return line.rfind(text, 0) == 0; });
    return found;
}

} // namespace testing_support
