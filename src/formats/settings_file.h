// The lines of the Companion's settings file, each in the form identifier, "=", value. Each setting
// has a different search rule. No platform header.
#pragma once

#include <string>
#include <string_view>

namespace torvapdm {

// Applies one line, its line feed included, to the value of a setting: a line that holds the
// identifier anywhere and has a "=" replaces the value by the text after the first "=", less the
// line's last character.
void applySettingLine(std::string_view line, std::string_view identifier, std::string& value);

// True when the line holds "AlwaysSaveTools=y": every save sends the setup sheet.
bool hasAlwaysSaveTools(std::string_view line);

// The key of the NC-import switch.
inline constexpr char ncImportKey[] = "MCXIMPORTNC";

// Applies one line to the answer of the NC-import switch so far, "y" or "n".
void applyNcImportLine(std::string_view line, std::string& answer);

} // namespace torvapdm
