// The settings file, `cfg\settings.ini`, as the hosts' add-in reads it: 8-bit text, a setting a
// line, `UseFtpServer=y`.
#pragma once

#include "tools/zemlink/report.h"

#include <string>
#include <string_view>
#include <vector>

namespace zemlink {

// The lines as they are read one at a time: with their line feed, in pieces of at most 1023 bytes,
// up to a Ctrl-Z, the carriage return in front of a line feed left out.
std::vector<std::string> settingLines(std::string_view bytes);

// The value of the last line that holds the key anywhere and an equals sign. It loses its last
// character, which is the line feed unless the last line lacks one.
std::string settingValue(const std::vector<std::string>& lines, std::string_view key);

// What the four settings come to: UseFtpServer, AlwaysSaveTools, MCXCATIA, MCXIMPORTNC, each true
// or false.
Report settingsInForce(std::string_view bytes);

// True when the last line has no line feed, so that its value loses its last character.
bool isLastSettingCut(std::string_view bytes);

} // namespace zemlink
