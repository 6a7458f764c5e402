// Appends a UTF-8 line to "starts.txt" in its own folder for each start: the show command of the
// window, a space, and the command line after the program's name.
#include <string>
#include <windows.h>

namespace {

std::wstring recordPath()
{
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    const std::wstring whole = path;
    return whole.substr(0, whole.rfind(L'\\') + 1) + L"starts.txt";
}

void append(const std::string& line)
{
    const HANDLE file = CreateFileW(recordPath().c_str(), FILE_APPEND_DATA,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_ALWAYS, 0, nullptr);
    DWORD written = 0;
    WriteFile(file, line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
    CloseHandle(file);
}

} // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int show)
{
    std::wstring arguments = GetCommandLineW();
    const size_t programEnd =
        arguments.front() == L'"' ? arguments.find(L'"', 1) + 1 : arguments.find(L' ');
    arguments = programEnd < arguments.size() ? arguments.substr(programEnd) : L"";
    const std::wstring line = std::to_wstring(show) + arguments + L'\n';
    char bytes[4096];
    const int size = WideCharToMultiByte(CP_UTF8, 0, line.c_str(), static_cast<int>(line.size()),
                                         bytes, sizeof bytes, nullptr, nullptr);
    append(std::string(bytes, static_cast<size_t>(size)));
    return 0;
}
