#include "standin/console/console.h"

#include <string>
#include <windows.h>

namespace standin {

namespace {

bool isOutput(HANDLE handle)
{
    return handle && handle != INVALID_HANDLE_VALUE && GetFileType(handle) != FILE_TYPE_UNKNOWN;
}

// A program with windows starts without a console, even from one.
HANDLE consoleOfStarter()
{
    AttachConsole(ATTACH_PARENT_PROCESS);
    return CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                       nullptr, OPEN_EXISTING, 0, nullptr);
}

std::string utf8(std::wstring_view text)
{
    const int length = static_cast<int>(text.size());
    const int size =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, bytes.data(), size, nullptr, nullptr);
    return bytes;
}

bool writeTo(HANDLE output, std::wstring_view text)
{
    DWORD mode = 0, written = 0;
    if (GetConsoleMode(output, &mode))
        return WriteConsoleW(output, text.data(), static_cast<DWORD>(text.size()), &written,
                             nullptr) != FALSE;
    const std::string bytes = utf8(text);
    return WriteFile(output, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) !=
           FALSE;
}

} // namespace

bool printText(Output output, std::wstring_view text)
{
    const std::wstring line = std::wstring(text) + L'\n';
    const HANDLE given =
        GetStdHandle(output == Output::result ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE);
    if (isOutput(given))
        return writeTo(given, line);
    const HANDLE console = consoleOfStarter();
    if (!isOutput(console))
        return false;
    const bool isWritten = writeTo(console, line);
    CloseHandle(console);
    FreeConsole(); // Ctrl+C there must not end this program
    return isWritten;
}

void printOrShow(Output output, std::wstring_view text, const wchar_t* boxTitle)
{
    if (printText(output, text))
        return;
    const UINT icon = output == Output::error ? MB_ICONWARNING : MB_ICONINFORMATION;
    MessageBoxW(nullptr, std::wstring(text).c_str(), boxTitle, MB_OK | icon);
}

} // namespace standin
