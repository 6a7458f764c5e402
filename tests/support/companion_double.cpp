#include "support/companion_double.h"

#include "companion/identifiers.h"
#include "support/bytes.h"
#include "support/waiting.h"
#include "incoming/incoming_state.h"

namespace testing_support {

CompanionDouble::~CompanionDouble()
{
    if (semaphore_)
        CloseHandle(semaphore_);
    if (window_)
        DestroyWindow(window_);
}

bool CompanionDouble::holdSemaphore(SECURITY_ATTRIBUTES* security)
{
    semaphore_ = CreateSemaphoreW(security, 1, 1, torvapdm::companionSemaphoreName.c_str());
    return semaphore_ != nullptr;
}

HWND CompanionDouble::showWindow()
{
    window_ = CreateWindowExW(0, L"STATIC", L"companion", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0,
                              200, 100, nullptr, nullptr, nullptr, nullptr);
    SetPropW(window_, torvapdm::companionInstanceName.c_str(),
             reinterpret_cast<HANDLE>(INT_PTR{1}));
    pumpMessages();
    return window_;
}

void recordCompanionStarts(const Installation& installation)
{
    installation.installCompanion(programFolder() + L"start_recorder.exe");
}

std::vector<std::wstring> companionStarts(const Installation& installation, size_t count)
{
    std::vector<std::wstring> lines;
    waitUntil([&] {
        lines = linesOf(fromUtf8(readBytes(installation.path(L"starts.txt")).value_or("")));
        return lines.size() >= count;
    });
    return lines;
}

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
