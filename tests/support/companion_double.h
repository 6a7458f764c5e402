// Simulates the Companion: in the test's process, everything the add-in uses to detect it; and a
// program in its place that records how it was started.
#pragma once

#include "support/installation.h"

#include <string>
#include <string_view>
#include <vector>
#include <windows.h>

namespace testing_support {

// Everything that indicates a running Companion; removed by the destructor.
class CompanionDouble {
public:
    CompanionDouble() = default;
    ~CompanionDouble();
    CompanionDouble(const CompanionDouble&) = delete;
    CompanionDouble& operator=(const CompanionDouble&) = delete;

    // Holds the semaphore, so that the Companion appears to be running; false if it cannot be
    // created.
    bool holdSemaphore(SECURITY_ATTRIBUTES* security = nullptr);
    // Shows a window with the instance property.
    HWND showWindow();

private:
    HANDLE semaphore_ = nullptr;
    HWND window_ = nullptr;
};

// Puts a program in the Companion's place that records each start.
void recordCompanionStarts(const Installation& installation);

// The recorded starts, once there are at least this many: the show command of the window and the
// arguments.
std::vector<std::wstring> companionStarts(const Installation& installation, size_t count);

// Opens the existing command file with all three sharing rights and writes the request with one
// call. False if the file does not exist or the write fails.
bool writeRequest(const std::wstring& commandFile, std::string_view request);

// The bytes of an open request: byte-order mark, id, space, path, line feed.
std::string openRequest(int id, const std::string& path);

} // namespace testing_support
