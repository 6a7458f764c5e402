// The sentence that the status line shows for an event.
#pragma once

#include "peer/companion_log.h"

#include <string>

namespace companion {

// Empty for an event that leaves the status line as it is.
std::wstring statusText(const peer::CompanionEvent& event);

} // namespace companion
