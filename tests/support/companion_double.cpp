#include "support/companion_double.h"

#include "companion/identifiers.h"
#include "support/bytes.h"
#include "support/waiting.h"

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

} // namespace testing_support
