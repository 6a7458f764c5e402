// How one line of the settings file answers a look-up. No platform header: this is a decision.
#pragma once

#include <string>
#include <string_view>

namespace torvapdm {

// Applies one line, its line feed included, to `value`: a line that holds the identifier anywhere
// and has a "=" replaces the value by what stands behind the first "=", less the line's last
// character.
void applySettingLine(std::string_view line, std::string_view identifier, std::string& value);

} // namespace torvapdm
