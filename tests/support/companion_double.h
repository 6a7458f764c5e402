// Simulates the Companion: in the test's process, everything the add-in uses to detect it; and a
// program in its place that records how it was started.
#pragma once

#include "companion/identifiers.h"
#include "incoming/incoming_state.h"
#include "peer/handle.h"
#include "support/bytes.h"
#include "support/installation.h"
#include "support/waiting.h"

#include <string>
#include <string_view>
#include <windows.h>

namespace testing_support {

// Everything that indicates a running Companion; removed by the destructor.
class CompanionDouble {
public:
    CompanionDouble() = default;
    ~CompanionDouble()
    {
        if (window_)
            DestroyWindow(window_);
    }
    CompanionDouble(const CompanionDouble&) = delete;
    CompanionDouble& operator=(const CompanionDouble&) = delete;

    // Holds the semaphore, so that the Companion appears to be running; false if it cannot be
    // created.
    bool holdSemaphore(SECURITY_ATTRIBUTES* security = nullptr)
    {
        semaphore_.reset(
            CreateSemaphoreW(security, 1, 1, torvapdm::companionSemaphoreName.c_str()));
        return semaphore_ != nullptr;
    }

    // Shows a window with the instance property.
    HWND showWindow()
    {
        window_ = CreateWindowExW(0, L"STATIC", L"companion", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0,
                                  0, 200, 100, nullptr, nullptr, nullptr, nullptr);
        SetPropW(window_, torvapdm::companionInstanceName.c_str(),
                 reinterpret_cast<HANDLE>(INT_PTR{1}));
        pumpMessages();
        return window_;
    }

private:
    peer::OwnHandle semaphore_;
    HWND window_ = nullptr;
};

// Puts a program in the Companion's place that records each start.
inline void recordCompanionStarts(const Installation& installation)
{
    installation.installCompanion(programFolder() + L"start_recorder.exe");
}

// The recorded starts, once there are at least this many: the show command of the window and the
// arguments.
inline Lines companionStarts(const Installation& installation, size_t count)
{
    Lines lines;
    waitUntil([&] {
        lines = linesOf(fromUtf8(readBytes(installation.path(L"starts.txt")).value_or("")));
        return lines.size() >= count;
    });
    return lines;
}

// Opens the existing command file with all three sharing rights and writes the request with one
// call. False if the file does not exist or the write fails.
inline bool writeRequest(const std::wstring& commandFile, std::string_view request)
{
    const peer::OwnHandle file =
        peer::ownFile(CreateFileW(commandFile.c_str(), GENERIC_READ | GENERIC_WRITE,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_EXISTING, 0, nullptr));
    DWORD written = 0;
    const DWORD size = static_cast<DWORD>(request.size());
    return file && WriteFile(file.get(), request.data(), size, &written, nullptr) &&
           written == size;
}

// The bytes of an open request: byte-order mark, id, space, path, line feed.
inline std::string openRequest(int id, const std::string& path)
{
    return "\xEF\xBB\xBF" + std::to_string(id) + ' ' + path + '\n';
}

} // namespace testing_support
