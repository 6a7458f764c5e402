// The settings file's option to hand the tools over with every save. No platform header: this is a
// decision.
#pragma once

#include <string>

namespace torvapdm {

// True when this line of the settings file switches the option on.
bool asksForTools(const std::string& line);

} // namespace torvapdm
