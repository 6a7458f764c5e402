// What the add-in starts in the Companion's place while it is verified.
#pragma once

#include <string>
#include <vector>

namespace zemlink {

// One start of the Companion's program.
struct RecordedStart {
    int show = 0; // how its window was requested, a value of ShowWindow
    std::wstring arguments{};

    bool operator==(const RecordedStart&) const = default;
};

// Copies this program to TORVA-ZEM.exe in the folder. Throws std::runtime_error.
void putRecorder(const std::wstring& folder);

// True in such a copy. A copy of zemlink is used because the package has no other program, and
// because how the add-in starts the Companion can only be seen by the program that is started.
bool isRecorder();

// In such a copy: appends this start to the list in its own folder; returns the exit code.
int recordStart();

// The starts so far, in the order in which they were recorded.
std::vector<RecordedStart> readStarts(const std::wstring& folder);

} // namespace zemlink
