#include "bench/bare_start.h"

#include "bench/surroundings.h"
#include "companion/identifiers.h"
#include "control.h"
#include "support/bytes.h"
#include "incoming/incoming_state.h"

#include <atomic>
#include <cstdio>
#include <cstring>
#include <io.h>
#include <share.h>

namespace bench {

namespace {

std::atomic<bool> isStopping;

std::wstring commandFilePath()
{
    return installation().commandFile(GetCurrentProcessId());
}

DWORD WINAPI networkBare(LPVOID)
{
    WSADATA data;
    WSAStartup(MAKEWORD(1, 1), &data);
    listen(socket(AF_INET, SOCK_STREAM, 0), 10);
    return 0;
}

DWORD WINAPI listenerBare(LPVOID)
{
    const std::string path = testing_support::toUtf8(commandFilePath());
    while (!isStopping) {
        if (_access(path.c_str(), 0) == 0)
            if (FILE* const file = _fsopen(path.c_str(), "r", _SH_DENYNO))
                std::fclose(file);
        Sleep(100);
    }
    return 0;
}

HANDLE startThread(LPTHREAD_START_ROUTINE procedure)
{
    const HANDLE thread = CreateThread(nullptr, 0, procedure, nullptr, CREATE_SUSPENDED, nullptr);
    ResumeThread(thread);
    return thread;
}

HWND createWindowBare(HWND mainWindow)
{
    RegisterWindowMessageW(torvapdm::openMessageName.c_str());
    RegisterWindowMessageW(torvapdm::commitMessageName.c_str());
    RegisterWindowMessageW(torvapdm::getCheckedOutMessageName.c_str());
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = DefWindowProcW;
    windowClass.lpszClassName = torvapdm::hostInstanceName.c_str();
    RegisterClassW(&windowClass);
    return CreateWindowExW(0, torvapdm::hostInstanceName.c_str(), L"", WS_OVERLAPPEDWINDOW,
                           CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, mainWindow,
                           nullptr, nullptr, nullptr);
}

void readRegistryBare()
{
    HKEY key = nullptr;
    wchar_t folder[MAX_PATH];
    DWORD type = 0;
    DWORD size = 0;
    RegCreateKeyExW(HKEY_CURRENT_USER, L"SOFTWARE\\TORVA AS\\ZEM", 0, nullptr, 0,
                    KEY_READ | KEY_WOW64_32KEY, nullptr, &key, nullptr);
    RegQueryValueExW(key, L"installation folder", nullptr, &type, nullptr, &size);
    RegQueryValueExW(key, L"installation folder", nullptr, &type, reinterpret_cast<BYTE*>(folder),
                     &size);
}

HANDLE createFileBare()
{
    return CreateFileW(commandFilePath().c_str(), GENERIC_READ | GENERIC_WRITE,
                       FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                       CREATE_ALWAYS, FILE_FLAG_DELETE_ON_CLOSE, nullptr);
}

} // namespace

std::wstring writeBareLibrary()
{
    std::string bytes =
        testing_support::readBytes(testing_support::programFolder() + L"torvapdm.dll").value_or("");
    require(bytes.size() > sizeof(IMAGE_DOS_HEADER), "the add-in's library is there");
    IMAGE_DOS_HEADER start;
    std::memcpy(&start, bytes.data(), sizeof start);
    char* const place = bytes.data() + start.e_lfanew;
    IMAGE_NT_HEADERS headers;
    std::memcpy(&headers, place, sizeof headers);
    headers.OptionalHeader.AddressOfEntryPoint = 0;
    headers.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT] = {};
    std::memcpy(place, &headers, sizeof headers);
    const std::wstring path = installation().path(L"tmp\\bare.dll");
    testing_support::writeBytes(path, bytes);
    return path;
}

BareAddIn startBare(const std::wstring& library, HWND mainWindow)
{
    BareAddIn addIn{};
    addIn.library = LoadLibraryW(library.c_str());
    isStopping = false;
    addIn.window = createWindowBare(mainWindow);
    addIn.network = startThread(networkBare);
    SetThreadPriority(addIn.network, THREAD_PRIORITY_NORMAL);
    readRegistryBare();
    addIn.commandFile = createFileBare();
    addIn.listener = startThread(listenerBare);
    SetPropW(mainWindow, torvapdm::hostInstanceName.c_str(), reinterpret_cast<HANDLE>(INT_PTR{1}));
    return addIn;
}

void stopBare(const BareAddIn& addIn, HWND mainWindow)
{
    DestroyWindow(addIn.window);
    RemovePropW(mainWindow, torvapdm::hostInstanceName.c_str());
    isStopping = true;
    for (const HANDLE thread : {addIn.network, addIn.listener}) {
        WaitForSingleObject(thread, INFINITE);
        CloseHandle(thread);
    }
    CloseHandle(addIn.commandFile);
    FreeLibrary(addIn.library);
}

} // namespace bench
