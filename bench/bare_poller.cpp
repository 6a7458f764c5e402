#include "bench/bare_poller.h"

#include "bench/arrivals.h"
#include "bench/surroundings.h"

namespace bench {

namespace {

constexpr wchar_t windowClassName[] = L"bare poller";
constexpr UINT arrivalMessage = WM_APP;

LRESULT CALLBACK takeMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message != arrivalMessage)
        return DefWindowProcW(window, message, wParam, lParam);
    noteArrival();
    return 0;
}

HWND createWindow()
{
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = takeMessage;
    windowClass.lpszClassName = windowClassName;
    RegisterClassW(&windowClass);
    return CreateWindowExW(0, windowClassName, L"", 0, 0, 0, 0, 0, nullptr, nullptr, nullptr,
                           nullptr);
}

HANDLE createFile(const std::wstring& path)
{
    return CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE,
                       FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                       CREATE_ALWAYS, FILE_FLAG_DELETE_ON_CLOSE, nullptr);
}

} // namespace

BarePoller::BarePoller(const std::wstring& path)
    : path_(path), file_(createFile(path)), window_(createWindow())
{
    require(file_ != INVALID_HANDLE_VALUE && window_, "the bare poller has its file and window");
    thread_ = std::thread([this] { poll(); });
}

BarePoller::~BarePoller()
{
    isStopping_ = true;
    thread_.join();
    CloseHandle(file_);
    DestroyWindow(window_);
    UnregisterClassW(windowClassName, nullptr);
}

void BarePoller::poll()
{
    while (!isStopping_) {
        Sleep(pollingPeriodMs);
        LARGE_INTEGER size{};
        GetFileSizeEx(file_, &size);
        if (size.QuadPart == 0)
            continue;
        std::string request(static_cast<size_t>(size.QuadPart), '\0');
        DWORD read = 0;
        ReadFile(file_, request.data(), static_cast<DWORD>(request.size()), &read, nullptr);
        CloseHandle(file_);
        file_ = createFile(path_);
        PostMessageW(window_, arrivalMessage, 0, 0);
    }
}

} // namespace bench
