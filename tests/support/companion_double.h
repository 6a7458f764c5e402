// Plays the Companion: inside the test's process as far as the add-in looks for it, and as a
// program that writes down how it was started.
#pragma once

#include "support/installation.h"

#include <string>
#include <string_view>
#include <vector>
#include <windows.h>

namespace testing_support {

// The marks of a running Companion, taken away with this object.
class CompanionDouble {
public:
    CompanionDouble() = default;
    ~CompanionDouble();
    CompanionDouble(const CompanionDouble&) = delete;
    CompanionDouble& operator=(const CompanionDouble&) = delete;

    // Holds the semaphore, so that the Companion counts as running; false when it cannot be made.
    bool holdSemaphore(SECURITY_ATTRIBUTES* security = nullptr);
    // Shows a window with the instance property.
    HWND showWindow();

private:
    HANDLE semaphore_ = nullptr;
    HWND window_ = nullptr;
};

// Puts a program in the Companion's place that writes down each of its starts.
void recordCompanionStarts(const Installation& installation);

// What it wrote, once it holds so many lines: how the window was to be shown, and the arguments.
std::vector<std::wstring> companionStarts(const Installation& installation, size_t count);

// Opens the existing command file with all three sharing rights and writes the request in one
// piece. False when the file does not exist or the write fails.
bool writeRequest(const std::wstring& commandFile, std::string_view request);

// The bytes of an open request: mark, id, space, path, line feed.
std::string openRequest(int id, const std::string& path);

} // namespace testing_support
