// Lets other runs of zemlink find the recording under way.
#pragma once

#include "peer/handle.h"

#include <string>

namespace zemlink {

// Names the file for the user's other programs as long as the object exists. Throws
// std::runtime_error when another recording is under way.
class RunningRecording {
public:
    explicit RunningRecording(const std::wstring& path);

private:
    peer::OwnHandle mapping_;
};

// Empty when no recording is under way.
std::wstring findRunningRecording();

} // namespace zemlink
